#pragma once

#include "workshop/art/texture/dxt1_block.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace dunkman {

/// The different colours of a block's opaque texels, each with the number of texels that have it.
struct BlockColours {
    struct Entry {
        std::array<int, 3> channels = {};
        int weight = 0;
    };
    std::array<Entry, 16> entries = {};
    std::size_t count = 0;
};

/// A try at a block: `parts + 1` colours, evenly spaced on the straight line between two ends. Three parts
/// give the block of four opaque colours, two parts the block of three and a hole.
struct BlockFit {
    int parts = 3;
    ColourSteps from = {};
    ColourSteps to = {};
    /// Sum over all texels and channels of the squared difference to the nearest colour of the line.
    std::int64_t error = INT64_MAX;
};

/// The colours of the line; entries behind index `parts` are unused.
using LineColours = std::array<std::array<int, 3>, 4>;
LineColours lineColours(const BlockFit& fit);

std::size_t nearestOnLine(const LineColours& line, int parts, const std::array<int, 3>& channels);
std::int64_t fitError(const BlockColours& colours, const BlockFit& fit);

/// True when `candidate` should replace `best`: less error or, at equal error, ends that lie closer together,
/// since those depend less on how a decoder rounds.
bool isBetter(const BlockFit& candidate, const BlockFit& best);

} // namespace dunkman
