#include "screens/credits_screen.h"

#include "screens/layout.h"
#include "screens/screen_writer.h"

namespace dunkman {

namespace {
constexpr double holdSeconds = 10.0;
}

void CreditsScreen::enter() { hold.start(holdSeconds); }

void CreditsScreen::update() {
    if (hold.runOut()) {
        writable::screenState.currentScreen = nullptr;
    }
}

void CreditsScreen::render() {
    drawMenuBackground();
    drawMenuDecoration(decoration);
    drawCreditLines();
}

} // namespace dunkman
