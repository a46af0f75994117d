#include "world/zombie_dead.h"

#include <algorithm>

#include "base/frame_state.h"
#include "render/image_table.h"
#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

namespace {

constexpr std::array<std::string_view, 4> images = {"zombieDeath0", "zombieDeath1", "zombieDeath2",
                                                    "zombieDeath3"};

constexpr double lastFrame = 3.0;

// How far each picture is drawn from where the zombie stood, in shares of the corpse's size.
constexpr std::array<Vec2, 4> frameOffsets = {{{-0.02, 0.0}, {-0.02, 0.15}, {-0.02, 0.3}, {-0.02, 0.45}}};

} // namespace

template <> const ObjectClass& objectClass<ZombieDead>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<ZombieDead>(),
        .meaning = "A fallen zombie: falls in four pictures, then lies there for the rest of the game.",
        .images = images,
    };
    return record;
}

ZombieDead::ZombieDead() {
    for (std::size_t frame = 0; frame < frames.size(); ++frame) {
        frames[frame] = imageByKey(images[frame]);
    }
    pivot = {0.5, 0.0};
    size.y = 2.0;
    texture = frames[0];
    fitWidthToImage();
}

void ZombieDead::update() {
    if (frameTime >= lastFrame) {
        return;
    }
    frameTime = std::min(frameTime + frameState.frameDelta * frameRate, lastFrame);
    const std::size_t frame = frameNumber();
    texture = frames[frame];
    zOffset = static_cast<double>(frame) * -0.25 - 0.125; // each picture lies a little further back
    fitWidthToImage();
}

void ZombieDead::drawScaled(Vec2 scale, double angle) {
    const Vec2 offset = frameOffsets[frameNumber()];
    const double offsetX = mirrorX ? -offset.x : offset.x;
    const Vec2 place{position.x - offsetX * size.x, position.y - offset.y * size.y};
    Sprite sprite = asSprite();
    sprite.position = place;
    sprite.scale = scale;
    sprite.angle = angle;
    drawIfTextured(sprite);
}

std::size_t ZombieDead::frameNumber() const { return static_cast<std::size_t>(frameTime); }

void ZombieDead::traceState(TraceLine& line) const {
    Drawable::traceState(line);
    line.add("frameTime", frameTime);
}

} // namespace dunkman
