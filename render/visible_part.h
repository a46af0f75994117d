#pragma once

#include <array>
#include <cstddef>

#include "render/footprint.h"
#include "render/placement.h"
#include "render/texture.h"
#include "render/texture_coverage.h"
#include "render/view.h"

namespace dunkman {

// Most pictures have much around them that is transparent and costs as much to draw as what they show: without a graphics
// card a third of a frame.

// Rectangles of the picture: all of a sprite that can be seen lies within them.
struct VisibleParts {
    std::array<PixelRect, mostTextureParts> parts;
    std::size_t count = 0; // of the parts; 0: it would not pay to leave anything out
};

// The sprite is given by its texture, with what is known of that, and its placement.
VisibleParts visibleParts(const Texture2D& texture, const CoverageByLevel& coverage, bool mirrorX,
                          bool mirrorY, const Placement& placement, const Matrix4& view);

} // namespace dunkman
