#pragma once

#include "workshop/art/texture/picture.h"

#include <vector>

namespace dunkman {

/// Directions in which a picture is laid beside itself, so that filters must see the other edge.
struct Tiling {
    bool across = false;
    bool down = false;
};

/// floor(log2(larger side)) + 1: halved, rounding down, until both sides are 1.
int mipLevelCount(int width, int height);

/// All levels from the picture itself down to 1 by 1, cut out hard: every texel has alpha 0 (and is black) or
/// 255. Each level covers the same share of its area as level 0, as near as its number of texels allows, and
/// at least one texel if level 0 has any.
std::vector<Picture> makeMipChain(const Picture& picture, Tiling tiling);

/// The share of texels that is not cut away, 0 to 1.
double coverage(const Picture& picture);

} // namespace dunkman
