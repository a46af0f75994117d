#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dunkman {

struct DdsImage;

// The borders of a texture that hold nothing, so that pixels need not be drawn that nobody could see: whatever is sampled
// there is transparent. Texels of its full size; the rows count as they lie in the file, from the top of the picture.
struct TextureCoverage {
    std::uint16_t left = 0;
    std::uint16_t top = 0;
    std::uint16_t right = 0;
    std::uint16_t bottom = 0;

    friend bool operator==(const TextureCoverage&, const TextureCoverage&) = default;
};

inline constexpr std::size_t coverageLevels = 4;

// By the coarsest level that is sampled, 0 being the full size: small levels smear texels over what lies beside them.
using CoverageByLevel = std::array<TextureCoverage, coverageLevels>;

// Looks at every texel of those levels; the pixels are taken as DXT1.
CoverageByLevel coverageOf(const DdsImage& image);

} // namespace dunkman
