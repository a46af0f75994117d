#include "world/zombie_dead.h"

#include <algorithm>

#include "base/frame_state.h"
#include "render/image_table.h"

namespace dunkman {

namespace {

constexpr double lastFrame = 3.0;

// How far each picture is drawn from where the zombie stood, in shares of the corpse's size.
constexpr std::array<Vec2, 4> frameOffsets = {{{-0.02, 0.0}, {-0.02, 0.15}, {-0.02, 0.3}, {-0.02, 0.45}}};

} // namespace

ZombieDead::ZombieDead() {
    frames = {imageByKey("zombieDeath0"), imageByKey("zombieDeath1"), imageByKey("zombieDeath2"),
              imageByKey("zombieDeath3")};
    pivot = {0.5, 0.0};
    size.y = 2.0;
    texture = frames[0];
    fitWidthToImage();
}

void ZombieDead::update() {
    if (frameTime >= lastFrame) {
        return;
    }
    frameTime = std::min(frameTime + frameDelta * frameRate, lastFrame);
    const std::size_t frame = frameNumber();
    texture = frames[frame];
    zOffset = static_cast<double>(frame) * -0.25 - 0.125; // each picture lies a little further back
    fitWidthToImage();
}

void ZombieDead::drawScaled(Vec2 scale, double angle) {
    const Vec2 offset = frameOffsets[frameNumber()];
    const double offsetX = mirrorX ? -offset.x : offset.x;
    const Vec2 place{position.x - offsetX * size.x, position.y - offset.y * size.y};
    submitSprite(isFlat ? SpriteMode::Flat : SpriteMode::World, place, scale, angle);
}

std::size_t ZombieDead::frameNumber() const { return static_cast<std::size_t>(frameTime); }

} // namespace dunkman
