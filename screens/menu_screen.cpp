#include "screens/menu_screen.h"

#include <array>
#include <string_view>

#include "audio/music.h"
#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "screens/layout.h"

namespace dunkman {

namespace {

constexpr double holdSeconds = 8.0;

struct ControlHint {
    std::string_view text;
    double letterHeight;
    Vec2 textCentre;
    std::string_view picture;
    double pictureHeight;
    Vec2 pictureCentre;
};

constexpr std::array<ControlHint, 4> controlHints = {{
    {"TO MOVE", 0.5, {-4.0, -1.4}, "btnArrow", 1.25, {-4.0, -0.25}},
    {"EQUIP WEAPON", 0.5, {5.5, -0.9}, "btnZ", 0.7, {5.5, -0.20000000000000007}},
    {"ATTACK", 0.5, {4.5, -3.15}, "btnX", 0.7, {4.5, -2.45}},
    // The two spaces leave the gap in which the key picture sits.
    {"PRESS  TO START", 0.45, {-1.5, -3.5}, "btnX", 0.7, {-2.05, -3.55}},
}};

} // namespace

void MenuScreen::enter() {
    selectMusic(MusicSelection::Game);
    hold.start(holdSeconds);
}

void MenuScreen::update() {
    if (hold.runOut()) {
        switchTo(ScreenId::Game);
    }
}

void MenuScreen::render() {
    drawMenuBackground();
    drawMenuDecoration(decoration);
    const double angle =
        exactCos(frameState.elapsedTime * 5.0) * 4.0 + 2.0 * exactCos(frameState.elapsedTime * 13.0);
    for (const ControlHint& hint : controlHints) {
        drawCentredText(hint.text, hint.letterHeight, hint.textCentre);
        drawInterfacePicture(hint.picture, hint.pictureCentre, hint.pictureHeight, angle, 0.0);
    }
}

} // namespace dunkman
