#pragma once

#include <cstdint>
#include <string>

namespace dunkman {

// The bytes of a DDS file as a test needs it; every level's texels are filled with the level's number plus 1.
struct DdsBytes {
    std::uint32_t width = 4;
    std::uint32_t height = 4;
    std::uint32_t mipMapCount = 1;
    std::uint32_t fourCc = 0x31545844; // "DXT1"

    std::string build() const;
};

} // namespace dunkman
