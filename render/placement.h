#pragma once

#include <array>

#include "base/geometry.h"

namespace dunkman {

// The values of the uniforms that place the quad of a sprite.
struct Placement {
    std::array<float, 4> destMinAndSize; // its lower left corner relative to the position, then its size
    std::array<float, 4> posCosSin;      // position, then cosine and sine of the clockwise angle
};

// The parameters are those of a sprite.
Placement placementOf(Vec2 position, Vec2 size, Vec2 pivot, Vec2 scale, double angle);

} // namespace dunkman
