#pragma once

#include "workshop/art/texture/picture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dunkman {

/// A DXT1 texture as it lies in a DDS file: the blocks of each level, largest first.
struct DdsTexture {
    int width = 0;
    int height = 0;
    std::vector<std::vector<std::uint8_t>> levels;
};

/// Magic word, 124-byte header and all levels. The same texture always gives the same bytes.
std::vector<std::uint8_t> ddsBytes(const DdsTexture& texture);

/// Throws std::runtime_error, beginning with `name`, when the bytes are no DXT1 DDS file with all its levels.
DdsTexture parseDdsTexture(const std::vector<std::uint8_t>& bytes, const std::string& name);

/// Both throw std::runtime_error naming the file when that fails. Writing goes to a second file that is then
/// renamed, so that an interrupted run leaves no half-written texture.
void writeDdsTexture(const std::string& path, const DdsTexture& texture);
DdsTexture readDdsTexture(const std::string& path);

/// One level, decoded.
Picture decodeLevel(const DdsTexture& texture, int level);

} // namespace dunkman
