#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dunkman {

struct DdsImage;

// What is known of a texture's alpha, so that pixels need not be drawn that nobody could see. Texels of its full size;
// the rows count as they lie in the file, from the top of the picture. As it stands here, nothing is known.
struct TextureCoverage {
    // Borders that hold nothing: whatever is sampled there is transparent.
    std::uint16_t left = 0;
    std::uint16_t top = 0;
    std::uint16_t right = 0;
    std::uint16_t bottom = 0;

    // Rows that hide what is behind them from edge to edge: whatever is sampled there is opaque.
    std::uint16_t opaqueBegin = 0;
    std::uint16_t opaqueEnd = 0; // the first row that no longer does; the same as the begin: there are none

    friend bool operator==(const TextureCoverage&, const TextureCoverage&) = default;
};

inline constexpr std::size_t coverageLevels = 4;

// By the coarsest level that is sampled, 0 being the full size: small levels smear texels over what lies beside them.
using CoverageByLevel = std::array<TextureCoverage, coverageLevels>;

// Looks at every texel of those levels; the pixels are taken as DXT1.
CoverageByLevel coverageOf(const DdsImage& image);

} // namespace dunkman
