#include "render/nearest_first.h"

#include <algorithm>
#include <cassert>

#include "base/frame_state.h"
#include "render/placement.h"
#include "render/renderer_objects.h"

namespace dunkman {
namespace {

// Sprites that are in the picture at once; a level in play has less than a hundred. More are drawn in portions.
constexpr std::size_t mostEntries = 256;

constexpr Rect everywhere = {-1e9, -1e9, 1e9, 1e9};

// What the sprite may touch, a pixel more on every side than it should.
Rect boxAround(const Footprint& footprint) {
    const auto [minX, maxX] = std::minmax({footprint.at(0.0, 0.0).x, footprint.at(1.0, 0.0).x,
                                           footprint.at(0.0, 1.0).x, footprint.at(1.0, 1.0).x});
    const auto [minY, maxY] = std::minmax({footprint.at(0.0, 0.0).y, footprint.at(1.0, 0.0).y,
                                           footprint.at(0.0, 1.0).y, footprint.at(1.0, 1.0).y});
    return {minX - 1.0, minY - 1.0, maxX + 1.0, maxY + 1.0};
}

bool areApart(const Rect& one, const Rect& other) {
    return one.maxX < other.minX || other.maxX < one.minX || one.maxY < other.minY || other.maxY < one.minY;
}

Placement placementOf(const Sprite& sprite) {
    const Vec2 pivot = {sprite.mirrorX ? 1.0 - sprite.pivot.x : sprite.pivot.x, sprite.pivot.y};
    return dunkman::placementOf(sprite.position, sprite.size, pivot, sprite.scale, sprite.angle);
}

Rect wholePicture() {
    return {0.0, 0.0, static_cast<double>(frameState.clientWidth),
            static_cast<double>(frameState.clientHeight)};
}

} // namespace

SpriteQueue::SpriteQueue() {
    entries.reserve(mostEntries);
    order.reserve(mostEntries);
}

void SpriteQueue::begin(const Matrix4& view) {
    assert(!open);
    open = true;
    viewProjection = view;
    plane = planeInPicture(view);
    entries.clear();
    order.clear();
}

bool SpriteQueue::mayOvertake(const Entry& later, const Entry& earlier) {
    return later.depths.farthest < earlier.depths.nearest || areApart(later.box, earlier.box);
}

void SpriteQueue::add(const Sprite& sprite) {
    const Placement placement = placementOf(sprite);
    const Rect box = plane ? boxAround(footprintOf(placement, *plane)) : everywhere;
    if (plane && areApart(box, wholePicture())) {
        return;
    }
    const Entry entry = {sprite, box, depthRangeOf(sprite.mode, placement, sprite.zOffset, viewProjection)};
    if (entries.size() == mostEntries) {
        drawAll();
    }
    auto place = order.end();
    while (place != order.begin() && mayOvertake(entry, entries[*(place - 1)])) {
        --place;
    }
    order.insert(place, static_cast<std::uint32_t>(entries.size()));
    entries.push_back(entry);
}

void SpriteQueue::end() {
    open = false;
    drawAll();
}

void SpriteQueue::drawAll() {
    for (const std::uint32_t index : order) {
        drawAtOnce(entries[index].sprite);
    }
    entries.clear();
    order.clear();
}

void drawNearestFirst(void (*drawSprites)()) {
    assert(rendererObjects != nullptr);
    if (!rendererObjects->software) {
        drawSprites();
        return;
    }
    SpriteQueue& queue = rendererObjects->software->queue;
    queue.begin(rendererObjects->view);
    drawSprites();
    queue.end();
}

} // namespace dunkman
