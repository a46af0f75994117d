#pragma once

#include "render/placement.h"
#include "render/sprite.h"
#include "render/view.h"

namespace dunkman {

// Places in the depth buffer, from -1, the nearest, to 1: all that a sprite may take there. A little wider than what the
// vertex shader calculates, by more than OpenGL's rounding can move it.
struct DepthRange {
    double nearest;
    double farthest;
};

// What sortingDepth of drawable_basic.vert makes of a sprite's corners under that view.
DepthRange depthRangeOf(SpriteMode mode, const Placement& placement, double zOffset, const Matrix4& view);

} // namespace dunkman
