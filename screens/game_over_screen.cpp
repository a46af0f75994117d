#include "screens/game_over_screen.h"

#include "render/image_table.h"
#include "render/sprite.h"
#include "screens/layout.h"

namespace dunkman {

namespace {

constexpr double holdSeconds = 10.0;
constexpr double keyHeight = 0.7;

// A second glass, tipped the other way, on the sand beside the hand.
void drawSecondSpill() {
    const Texture2D& spill = imageByKey("cocktailSpill");
    constexpr double height = 2.2;
    draw({.texture = spill,
          .mirrorX = true,
          .mirrorY = true,
          .mode = SpriteMode::Interface,
          .position = {-3.7, -3.0},
          .size = {aspectOf(spill) * height, height},
          .zOffset = 0.05});
}

} // namespace

void GameOverScreen::enter() { hold.start(holdSeconds); }

void GameOverScreen::update() {
    if (hold.runOut()) {
        switchTo(ScreenId::Credits);
    }
}

void GameOverScreen::render() {
    drawMenuBackground();
    drawCentredText("GAME OVER", 1.0, {0.0, 3.1});
    drawInterfacePicture("cocktailSpill", {0.0, 0.35}, 4.0, 0.0, 0.1);
    drawTextEndingAt("RETRY", 0.5, {0.35, -2.5});
    drawInterfacePicture("btnX", {0.95, -2.5}, keyHeight, 0.0, 0.0);
    drawTextEndingAt("QUIT", 0.5, {0.0, -3.65});
    drawInterfacePicture("btnEsc", {0.75, -3.65}, keyHeight, 0.0, 0.0);
    drawSecondSpill();
}

} // namespace dunkman
