#include "workshop/art/texture/single_colour.h"

#include <cstdlib>
#include <vector>

namespace dunkman {

namespace {

struct Ends {
    int from = 0;
    int to = 0;
};

/// For one channel and every value 0..255 the pair of steps whose mix comes nearest, then the closest pair.
std::vector<Ends> makeTable(int channel, int parts) {
    const int largest = largestSteps[static_cast<std::size_t>(channel)];
    std::vector<Ends> table(256);
    for (int value = 0; value < 256; ++value) {
        int bestCost = -1;
        for (int from = 0; from <= largest; ++from) {
            for (int to = 0; to <= largest; ++to) {
                const int mixed =
                    blendChannel(expandChannel(channel, from), expandChannel(channel, to), 1, parts);
                const int cost = std::abs(mixed - value) * 1000 + std::abs(from - to);
                if (bestCost < 0 || cost < bestCost) {
                    bestCost = cost;
                    table[static_cast<std::size_t>(value)] = {from, to};
                }
            }
        }
    }
    return table;
}

const std::vector<Ends>& tableFor(std::size_t channel, int parts) {
    static const std::vector<Ends> halves[2] = {makeTable(0, 2), makeTable(1, 2)};
    static const std::vector<Ends> thirds[2] = {makeTable(0, 3), makeTable(1, 3)};
    return (parts == 2 ? halves : thirds)[channel == 1 ? 1 : 0];
}

} // namespace

BlockFit fitSingleColour(const BlockColours& colours, int parts) {
    BlockFit fit;
    fit.parts = parts;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const auto value = static_cast<std::size_t>(colours.entries[0].channels[channel]);
        const Ends& ends = tableFor(channel, parts)[value];
        fit.from[channel] = ends.from;
        fit.to[channel] = ends.to;
    }
    fit.error = fitError(colours, fit);
    return fit;
}

} // namespace dunkman
