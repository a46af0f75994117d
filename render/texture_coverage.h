#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dunkman {

struct DdsImage;

// Texels of a texture's full size: the columns from `left` to before `right` of the rows from `top` to before `bottom`. The
// rows count as they lie in the file, from the top of the picture.
struct TexelRect {
    std::uint16_t left = 0;
    std::uint16_t top = 0;
    std::uint16_t right = 0;
    std::uint16_t bottom = 0;

    friend bool operator==(const TexelRect&, const TexelRect&) = default;
};

inline constexpr std::size_t mostTextureParts = 4;

// Where a texture may show something, so that pixels need not be drawn that nobody could see: whatever is sampled outside
// of these parts is transparent. They lie one below the other.
struct TextureCoverage {
    std::array<TexelRect, mostTextureParts> parts;
    std::uint8_t count = 0; // of the parts; 0: nothing is known

    friend bool operator==(const TextureCoverage&, const TextureCoverage&) = default;
};

inline constexpr std::size_t coverageLevels = 4;

// By the coarsest level that is sampled, 0 being the full size: small levels smear texels over what lies beside them.
using CoverageByLevel = std::array<TextureCoverage, coverageLevels>;

// Looks at the texels of those levels; the pixels are taken as DXT1.
CoverageByLevel coverageOf(const DdsImage& image);

} // namespace dunkman
