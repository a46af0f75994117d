#pragma once

#include "workshop/art/texture/picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dunkman {

/// A picture of an icon. Square, at most 256 texels wide.
struct IconPicture {
    Picture picture;
    std::vector<std::uint8_t> png; // the same as a PNG file; needed from 256 texels on
};

/// An icon file for Windows, the pictures in the given order: as bitmaps with a mask, as every reader knows them,
/// and as PNG from 256 texels on. The same pictures always give the same bytes.
std::vector<std::uint8_t> icoBytes(const std::vector<IconPicture>& pictures);

/// Makes an icon file of PNG files. Throws std::runtime_error naming the file when one cannot be read or written or
/// is no picture for an icon.
void writeIcon(const std::string& path, const std::vector<std::string>& pngPaths);

} // namespace dunkman
