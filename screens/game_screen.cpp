#include "screens/game_screen.h"

#include <algorithm>

#include "base/debug_output.h"
#include "base/fatal.h"
#include "base/frame_state.h"
#include "base/geometry.h"
#include "base/key_states_writer.h"
#include "exact/exact_math.h"
#include "render/gl.h"
#include "render/image_table.h"
#include "render/nearest_first.h"
#include "render/warm_up.h"
#include "screens/backdrop.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/scene_loader.h"
#include "world/world.h"

namespace dunkman {

namespace {

constexpr double cameraDistance = 10.0; // units
constexpr float nearPlane = 0.1f;
constexpr float farPlane = 1000.0f;

// Health display, in interface units.
constexpr double heartHeight = 0.5;
constexpr double heartGap = 0.2;
constexpr double heartMarginLeft = 0.4;
// More than any view holds: with the gap alone for a width, 88 reach its right edge.
constexpr std::int32_t mostHearts = 1000;

constexpr Matrix4 identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

const Player& hero() {
    const Player* player = world.first<Player>();
    if (player == nullptr) {
        fatal("The scene has no hero. Add an entry whose recipe makes a Player to scene.json5.");
    }
    return *player;
}

void drawHearts(std::int32_t health) {
    Drawable heart;
    heart.texture = imageByKey("pineappleHeart");
    heart.size = {heartHeight * aspectOf(heart.texture), heartHeight};
    heart.position.x = -halfViewWidth + heartMarginLeft + heart.size.x / 2.0;
    heart.position.y = halfViewWidth / frameState.aspectRatio - 0.25 - 0.2;
    for (std::int32_t i = 0; i < std::min(health, mostHearts); ++i) {
        heart.drawScaled({1.0, 1.0},
                         exactSin(frameState.elapsedTime * 8.0 - static_cast<double>(i) * 0.4) * 15.0);
        heart.position.x += heart.size.x + heartGap;
    }
}

} // namespace

Matrix4 worldViewProjection(double lookX, double lookY) {
    const double fieldOfView = exactAtan((viewWidth / frameState.aspectRatio) / cameraDistance);
    const float halfHeight = nearPlane * exactTan(static_cast<float>(0.5 * fieldOfView));
    const float halfWidth = halfHeight * static_cast<float>(frameState.aspectRatio);
    const float scaleX = nearPlane / halfWidth;
    const float scaleY = nearPlane / halfHeight;
    const float depthScale = -(farPlane + nearPlane) / (farPlane - nearPlane);
    const float depthOffset = -(2.0f * farPlane * nearPlane) / (farPlane - nearPlane);
    // The view moves the world by (-x, -y, -10).
    const auto distance = static_cast<float>(cameraDistance);
    // clang-format off
    return {scaleX, 0, 0, 0,
            0, scaleY, 0, 0,
            0, 0, depthScale, -1,
            scaleX * -static_cast<float>(lookX), scaleY * -static_cast<float>(lookY),
                depthScale * -distance + depthOffset, distance};
    // clang-format on
}

Matrix4 healthViewProjection() {
    const auto scaleX = static_cast<float>(1.0 / halfViewWidth);
    const auto scaleY = static_cast<float>(1.0 / ((viewWidth / frameState.aspectRatio) * 0.5));
    return {scaleX, 0, 0, 0, 0, scaleY, 0, 0, 0, 0, -0.01f, 0, 0, 0, -0.0f, 1};
}

GameScreen::GameScreen() {
    backdrop.texture = imageByKey("sunset");
    backdrop.position = {0.0, 0.3};
    backdrop.size = {2.0, 2.0};
    // Drivers make code for drawing without depth writes apart from the rest.
    glDepthMask(GLboolean{0});
    drawUnseen(backdrop.texture);
    glDepthMask(GLboolean{1});
    loadScene();
}

void GameScreen::enter() {
    // A recorded game begins with no key down, here and when it is replayed: what happens to be held while
    // the screens change must neither be missing from a recording nor steer a replay.
    if (frameState.inputMode == InputMode::Record || frameState.inputMode == InputMode::Replay) {
        releaseAllKeys();
    }
    world.clear();
    loadScene();
    if (world.first<Camera>() == nullptr) {
        debugText(
            "scene.json5 makes no Camera: its objects are drawn without one, and hardly any will be in view");
    }
}

void GameScreen::update() {
    world.updateAll();
    world.lateUpdateAll();
    world.applyPending();
    if (hero().health < 0) {
        switchTo(ScreenId::GameOver);
    }
}

void GameScreen::render() {
    setViewProjection(identity);
    drawBackdrop(backdrop.asSprite());

    if (const Camera* const camera = world.first<Camera>()) {
        setViewProjection(worldViewProjection(camera->position.x + camera->offset.x,
                                              camera->position.y + camera->offset.y));
    }
    drawNearestFirst([] { world.drawAll(); });

    setViewProjection(healthViewProjection());
    drawHearts(hero().health);
}

} // namespace dunkman
