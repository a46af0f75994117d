#pragma once

#include "workshop/art/texture/mip_chain.h"
#include "workshop/art/texture/picture.h"

#include <vector>

namespace dunkman {

/// A texel between filters: colour 0 to 255 multiplied by alpha, alpha 0 to 1; the filter may overshoot a
/// little.
struct SoftTexel {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    float alpha = 0.0F;
};

struct SoftPicture {
    int width = 0;
    int height = 0;
    std::vector<SoftTexel> texels;
};

/// The picture made smaller (neither side may grow) with a Mitchell-Netravali filter, on colour multiplied by
/// alpha. Beyond an edge the picture repeats in the directions in which it tiles; elsewhere the filter counts
/// only what is inside.
SoftPicture shrink(const Picture& picture, int width, int height, Tiling tiling);

} // namespace dunkman
