#include "screens/intro_screen.h"

#include "audio/music.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "render/scissor.h"
#include "render/view.h"
#include "screens/layout.h"
#include "screens/story_view.h"

namespace dunkman {

namespace {

constexpr double charactersPerSecond = 8.0;
constexpr double storyEnd = 46.0; // seconds

} // namespace

std::size_t typedCharacters(const StoryLine& line, double storyTime) {
    const double typed = (storyTime - line.start) * charactersPerSecond;
    const auto length = static_cast<double>(line.text.size());
    return typed < length ? static_cast<std::size_t>(typed) : line.text.size();
}

void IntroScreen::enter() { selectMusic(MusicSelection::Intro); }

void IntroScreen::update() {
    storyTime += frameState.frameDelta;
    if (eitherJustPressed(keys::x, keys::space)) {
        switchTo(ScreenId::Menu);
    }
}

void IntroScreen::drawStory() const {
    int row = 0;
    for (const StoryLine& line : storyLines) {
        if (line.start <= storyTime) {
            drawCentredText(line.text.substr(0, typedCharacters(line, storyTime)), storyLetterHeight,
                            {0.0, storyLineCentre(row)});
        }
        ++row;
    }
}

void IntroScreen::render() {
    drawMenuBackground();
    drawMenuDecoration(decoration);
    const StoryView view = storyViewAt(storyTime);
    if (view.lowered > 0.0) {
        const ScissorBelow scissor(view.cutAt);
        setScreenProjection(view.lowered);
        drawStory();
        setScreenProjection();
    } else {
        drawStory();
    }
    if (storyTime > storyEnd) {
        switchTo(ScreenId::Menu);
    }
}

} // namespace dunkman
