#include "screens/intro_screen.h"

#include "audio/music_selection.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "screens/layout.h"

namespace dunkman {

namespace {

constexpr double charactersPerSecond = 8.0;
constexpr double storyEnd = 46.0; // seconds
constexpr double letterHeight = 0.25;
constexpr double firstLineY = -3.0;
constexpr double lineSpacing = 0.6;

} // namespace

std::size_t typedCharacters(const StoryLine& line, double storyTime) {
    const double typed = (storyTime - line.start) * charactersPerSecond;
    const auto length = static_cast<double>(line.text.size());
    return typed < length ? static_cast<std::size_t>(typed) : line.text.size();
}

void IntroScreen::enter() { musicSelection = MusicSelection::Intro; }

void IntroScreen::update() {
    storyTime += frameDelta;
    if (eitherJustPressed(keys::x, keys::space)) {
        switchTo(ScreenId::Menu);
    }
}

void IntroScreen::render() {
    drawMenuBackground();
    drawMenuDecoration(decoration);
    double row = 0.0;
    for (const StoryLine& line : storyLines) {
        if (line.start <= storyTime) {
            drawCentredText(line.text.substr(0, typedCharacters(line, storyTime)), letterHeight,
                            {0.0, firstLineY - row * lineSpacing});
        }
        row += 1.0;
    }
    if (storyTime > storyEnd) {
        switchTo(ScreenId::Menu);
    }
}

} // namespace dunkman
