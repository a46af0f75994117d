#pragma once

#include "workshop/art/texture/picture.h"

#include <array>
#include <cstdint>

namespace dunkman {

/// A DXT1 block as it lies in the file: two colours of 5, 6 and 5 bits and 16 two-bit indices, texel 0 (upper
/// left) in the lowest bits. First colour > second: four opaque colours. Otherwise three, and index 3 is a
/// hole.
struct Dxt1Block {
    std::uint16_t firstColour = 0;
    std::uint16_t secondColour = 0;
    std::uint32_t indices = 0;

    bool operator==(const Dxt1Block&) const = default;
};

inline constexpr int dxt1BlockBytes = 8;

/// Red, green and blue in the block's own steps: 0 to 31, 0 to 63, 0 to 31.
using ColourSteps = std::array<int, 3>;
inline constexpr ColourSteps largestSteps = {31, 63, 31};

/// One channel (0 red, 1 green, 2 blue) from steps to 0..255: the high bits are repeated below.
int expandChannel(int channel, int steps);
std::uint16_t packColour(const ColourSteps& steps);
ColourSteps unpackColour(std::uint16_t packed);

/// The channel value `part / parts` of the way from one end to the other; whole numbers, rounded down, as
/// software decoders do. Graphics cards may differ by one.
constexpr int blendChannel(int from, int to, int part, int parts) {
    return ((parts - part) * from + part * to) / parts;
}

/// The four colours that the indices stand for. A hole is black with alpha 0.
std::array<Rgba, 4> blockPalette(const Dxt1Block& block);
std::array<Rgba, 16> decodeBlock(const Dxt1Block& block);

} // namespace dunkman
