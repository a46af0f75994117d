#pragma once

#include "workshop/art/texture/dds_file.h"
#include "workshop/art/texture/picture.h"

namespace dunkman {

/// The texture as the game shows it upright at this size in pixels: filtered within and between levels, cut
/// at an alpha of one half, colour divided by alpha, edges clamped. Contact sheets are made of these, so that
/// what is looked at is what will be seen.
Picture showTexture(const DdsTexture& texture, int width, int height);

} // namespace dunkman
