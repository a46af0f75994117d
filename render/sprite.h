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

// Draws one textured quad through the basic material. Angles in degrees, counter-clockwise; position, size in
// world units. `pivot` is the fraction of the size that lands on `position`; with mirrorX the mirrored pivot is
// written back through the reference, so callers pass a copy.
void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset);

// Sets uViewProjection to the interface view: 18 units wide, 18 / aspectRatio high, centred on the origin.
void setScreenProjection();

} // namespace dunkman
