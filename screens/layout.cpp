#include "screens/layout.h"

#include <algorithm>
#include <array>

#include "base/frame_state.h"
#include "render/picture.h"
#include "render/text.h"
#include "render/view.h"
#include "screens/backdrop.h"

namespace dunkman {

namespace {

// Proportions of the background picture: on wider windows its width fills the screen, on narrower ones its height.
constexpr double backgroundAspect = 1.4750996015936255;

struct CreditLine {
    std::string_view text;
    double letterHeight;
    double centreY;
};

// Laid out between the logo's lower edge and the bottom of a 21:9 window.
constexpr std::array<CreditLine, 6> creditLines = {{
    {"CODE QUILLMOSS", 0.4, -1.4},
    {"GRAPHICS VESPERINE", 0.4, -1.9},
    {"MUSIC DROMBLE", 0.4, -2.4},
    {"BASED ON", 0.2, -2.85},
    {"ZANDORELLA", 0.3, -3.2},
    {"BY HALVARD NUSK", 0.3, -3.6},
}};

constexpr Rect pointBox(Vec2 point) { return {point.x, point.y, point.x, point.y}; }

} // namespace

void drawMenuBackground() {
    setScreenProjection();
    drawBackdrop(pictureSprite("menuBackground", {0.0, 0.0},
                               viewWidth / std::min(frameState.aspectRatio, backgroundAspect), 0.0, -0.99,
                               SpriteMode::Interface));
}

void drawCentredText(std::string_view text, double letterHeight, Vec2 centre) {
    drawText(text, 0, letterHeight, 0.0, pointBox(centre), {0.5, 0.5});
}

void drawTextEndingAt(std::string_view text, double letterHeight, Vec2 end) {
    drawText(text, 0, letterHeight, 0.0, pointBox(end), {1.0, 0.5});
}

void drawInterfacePicture(std::string_view imageKey, Vec2 centre, double height, double angle,
                          double zOffset) {
    drawPicture(imageKey, centre, height, angle, zOffset, 0, SpriteMode::Interface);
}

void drawCreditLines() {
    for (const CreditLine& line : creditLines) {
        drawCentredText(line.text, line.letterHeight, {0.0, line.centreY});
    }
}

} // namespace dunkman
