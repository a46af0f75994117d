#include "screens/loading_screen.h"

#include <cmath>

#include "base/frame_state.h"
#include "render/picture.h"
#include "screens/layout.h"

namespace dunkman {

void LoadingScreen::update() {
    const double steps = std::floor(frameState.elapsedTime * 2.0) * 0.1;
    progress = steps * steps;
    if (progress > 1.1) {
        switchTo(ScreenId::Intro);
    }
}

void LoadingScreen::render() {
    drawMenuBackground();
    drawPicture("cocktailFull", {0.0, 0.35}, 4.0, 0.0, progress, 0, SpriteMode::Loading);
    drawCentredText("LOADING", 0.4, {0.0, -3.0});
}

} // namespace dunkman
