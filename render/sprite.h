#pragma once

#include <cstdint>

#include "base/geometry.h"
#include "render/texture.h"

namespace dunkman {

// How a sprite stands in the scene; the numbers are bits 2 and 3 of the shader's flags.
enum class SpriteMode : std::uint32_t {
    World = 0,     // upright: one depth for the whole sprite
    Flat = 1,      // lies in the ground plane
    Interface = 2, // overlay: its depth is zOffset
    Loading = 3,   // the loading picture: zOffset carries the progress
};

// A picture as it is to be drawn: name what differs from the upright, untinted one.
struct Sprite {
    Texture2D texture; // a copy, not owned
    bool mirrorX = false;
    bool mirrorY = false; // images are stored top row first: true shows them upright
    SpriteMode mode = SpriteMode::World;
    double gamma = 1.0;
    double gain = 1.0;
    double saturation = 1.0;
    double tintR = 1.0;
    double tintG = 1.0;
    double tintB = 1.0;
    Vec2 position;        // world units
    Vec2 size{1.0, 1.0};  // world units
    Vec2 pivot{0.5, 0.5}; // the fraction of the size that lands on the position
    Vec2 scale{1.0, 1.0}; // of the size, about the pivot
    double angle = 0.0;   // degrees, counter-clockwise, about the pivot
    double zOffset = 0.0;

    friend bool operator==(const Sprite&, const Sprite&) = default;
};

// Draws a sprite: at once, or within drawNearestFirst when its turn comes.
void draw(const Sprite& sprite);
void drawAtOnce(const Sprite& sprite);

// What these call, and nobody else: one textured quad through the basic material. With mirrorX the mirrored
// pivot is written back through the reference.
void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset);

} // namespace dunkman
