#pragma once

#include "workshop/art/texture/picture.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace dunkman {

/// Bytes of a picture of this size in DXT1: whole blocks of 4 by 4 texels, 8 bytes each.
std::size_t dxt1Bytes(int width, int height);

/// The blocks row by row from the top, each as it lies in a file (little-endian).
std::vector<std::uint8_t> encodePicture(const Picture& picture);

/// `blocks` holds at least dxt1Bytes(width, height) bytes.
Picture decodePicture(int width, int height, std::span<const std::uint8_t> blocks);

} // namespace dunkman
