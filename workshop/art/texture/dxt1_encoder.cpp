#include "workshop/art/texture/dxt1_encoder.h"

#include "workshop/art/texture/cluster_fit.h"
#include "workshop/art/texture/fit_search.h"
#include "workshop/art/texture/single_colour.h"

#include <utility>

namespace dunkman {

namespace {

// Lines from the cluster fit that are refined. More than this gains less than 0.01 dB on our pictures.
constexpr std::size_t refinedLines = 8;

constexpr std::uint32_t holeIndex = 3;

bool isInside(const BlockTexels& block, std::size_t texel) { return ((block.inside >> texel) & 1) != 0; }

bool isHole(const Rgba& texel) { return texel.alpha < alphaCut; }

bool hasHole(const BlockTexels& block) {
    for (std::size_t texel = 0; texel < 16; ++texel) {
        if (isInside(block, texel) && isHole(block.texels[texel])) {
            return true;
        }
    }
    return false;
}

BlockColours gatherColours(const BlockTexels& block) {
    BlockColours colours;
    for (std::size_t texel = 0; texel < 16; ++texel) {
        const Rgba& value = block.texels[texel];
        if (!isInside(block, texel) || isHole(value)) {
            continue;
        }
        const std::array<int, 3> channels = {value.red, value.green, value.blue};
        std::size_t entry = 0;
        while (entry < colours.count && colours.entries[entry].channels != channels) {
            ++entry;
        }
        colours.entries[entry].channels = channels;
        colours.entries[entry].weight += 1;
        if (entry == colours.count) {
            ++colours.count;
        }
    }
    return colours;
}

BlockFit bestFit(const BlockColours& colours, int parts) {
    if (colours.count == 1) {
        return fitSingleColour(colours, parts);
    }
    BlockFit best;
    best.parts = parts;
    for (const BlockFit& start : clusterFits(colours, parts, refinedLines)) {
        const BlockFit fit = refineFit(colours, start);
        if (isBetter(fit, best)) {
            best = fit;
        }
    }
    return best;
}

/// Puts the ends in the order that says which kind of block it is.
BlockFit ordered(BlockFit fit) {
    const bool ascending = packColour(fit.from) <= packColour(fit.to);
    const bool wantAscending = fit.parts == 2;
    if (ascending != wantAscending) {
        std::swap(fit.from, fit.to);
    }
    return fit;
}

/// The index that stands for a place on the line, counted from the first colour.
std::uint32_t indexOfPlace(std::size_t place, int parts) {
    if (place == 0) {
        return 0;
    }
    if (place == static_cast<std::size_t>(parts)) {
        return 1;
    }
    return static_cast<std::uint32_t>(place) + 1;
}

Dxt1Block writeBlock(const BlockTexels& block, const BlockFit& unordered) {
    const BlockFit fit = ordered(unordered);
    const LineColours line = lineColours(fit);
    // Two equal ends always make a block of the kind with holes, in which index 0 stands for their colour.
    const bool equalEnds = fit.from == fit.to;
    Dxt1Block result;
    result.firstColour = packColour(fit.from);
    result.secondColour = packColour(fit.to);
    for (std::size_t texel = 0; texel < 16; ++texel) {
        const Rgba& value = block.texels[texel];
        std::uint32_t index = 0;
        if (isInside(block, texel) && isHole(value)) {
            index = holeIndex;
        } else if (isInside(block, texel) && !equalEnds) {
            index =
                indexOfPlace(nearestOnLine(line, fit.parts, {value.red, value.green, value.blue}), fit.parts);
        }
        result.indices |= index << (2 * texel);
    }
    return result;
}

} // namespace

Dxt1Block encodeBlock(const BlockTexels& block) {
    const BlockColours colours = gatherColours(block);
    if (colours.count == 0) {
        return {0, 0, 0xFFFFFFFF};
    }
    BlockFit best = bestFit(colours, 2);
    if (!hasHole(block) && best.error > 0) {
        const BlockFit fourColours = bestFit(colours, 3);
        if (isBetter(fourColours, best)) {
            best = fourColours;
        }
    }
    return writeBlock(block, best);
}

} // namespace dunkman
