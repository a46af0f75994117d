#include "screens/pause_screen.h"

#include "base/key_states.h"
#include "screens/layout.h"

namespace dunkman {

void PauseScreen::update() {
    const bool goesOn = eitherJustPressed(keys::x, keys::space);
    const bool leaves = findKeyState(keys::escape) == KeyState::Pressed; // entering the game may change it
    if (goesOn) {
        switchTo(ScreenId::Game);
    }
    if (leaves) {
        switchTo(ScreenId::Menu);
    }
}

void PauseScreen::render() {
    drawMenuBackground();
    drawCentredText("PAUSED", 1.0, {0.0, 3.1});
    drawCreditLines();
    drawTextEndingAt("CONTINUE", 0.5, {1.2, 1.5});
    drawInterfacePicture("btnX", {1.8, 1.5}, 0.7, 0.0, 0.0);
    drawTextEndingAt("EXIT TO MENU", 0.5, {1.05, 0.4});
    drawInterfacePicture("btnEsc", {1.8, 0.4}, 0.7, 0.0, 0.0);
}

} // namespace dunkman
