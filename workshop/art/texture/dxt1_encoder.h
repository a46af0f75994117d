#pragma once

#include "workshop/art/texture/dxt1_block.h"

#include <array>
#include <cstdint>

namespace dunkman {

/// The 16 texels of a block, upper left first. Texels outside the picture (its size need not be a multiple of
/// four) have their bit in `inside` clear and may come out as anything.
struct BlockTexels {
    std::array<Rgba, 16> texels = {};
    std::uint16_t inside = 0xFFFF;

    bool operator==(const BlockTexels&) const = default;
};

/// Encodes one block. Texels with an alpha below alphaCut become holes: black with alpha 0. A block without
/// holes takes whichever kind of block, of four or of three colours, comes nearer to it.
Dxt1Block encodeBlock(const BlockTexels& block);

} // namespace dunkman
