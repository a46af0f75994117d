#pragma once

#include "workshop/art/texture/dds_file.h"
#include "workshop/art/texture/mip_chain.h"

namespace dunkman {

/// The whole way from a picture to a texture: hard cut, levels, DXT1.
DdsTexture buildTexture(const Picture& picture, Tiling tiling);

} // namespace dunkman
