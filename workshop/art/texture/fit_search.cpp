#include "workshop/art/texture/fit_search.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace dunkman {

namespace {

/// What one place of the line stands for: how many texels, and the sum of their values in one channel.
struct Places {
    std::array<int, 4> weight = {};
    std::array<std::array<int, 3>, 4> sum = {};
};

Places placesOf(const BlockColours& colours, const BlockFit& fit) {
    const LineColours line = lineColours(fit);
    Places places;
    for (std::size_t entry = 0; entry < colours.count; ++entry) {
        const BlockColours::Entry& colour = colours.entries[entry];
        const std::size_t place = nearestOnLine(line, fit.parts, colour.channels);
        places.weight[place] += colour.weight;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            places.sum[place][channel] += colour.weight * colour.channels[channel];
        }
    }
    return places;
}

/// Squared error of one channel for given ends, less the part that does not depend on them.
int channelCost(const Places& places, std::size_t channel, int parts, int from, int to) {
    const int start = expandChannel(static_cast<int>(channel), from);
    const int end = expandChannel(static_cast<int>(channel), to);
    int cost = 0;
    for (int part = 0; part <= parts; ++part) {
        const auto place = static_cast<std::size_t>(part);
        const int value = blendChannel(start, end, part, parts);
        cost += places.weight[place] * value * value - 2 * value * places.sum[place][channel];
    }
    return cost;
}

/// Where least squares puts the ends of one channel, in steps; false when the places do not determine both.
bool solveChannel(const Places& places, std::size_t channel, int parts, int& from, int& to) {
    double fromFrom = 0.0;
    double toTo = 0.0;
    double fromTo = 0.0;
    double fromSum = 0.0;
    double toSum = 0.0;
    for (int part = 0; part <= parts; ++part) {
        const auto place = static_cast<std::size_t>(part);
        const double share = static_cast<double>(part) / parts;
        const double rest = 1.0 - share;
        fromFrom += rest * rest * places.weight[place];
        toTo += share * share * places.weight[place];
        fromTo += rest * share * places.weight[place];
        fromSum += rest * places.sum[place][channel];
        toSum += share * places.sum[place][channel];
    }
    const double determinant = fromFrom * toTo - fromTo * fromTo;
    if (determinant < 1e-9) {
        return false;
    }
    const double scale = largestSteps[channel] / 255.0;
    from = static_cast<int>(std::floor((fromSum * toTo - toSum * fromTo) / determinant * scale + 0.5));
    to = static_cast<int>(std::floor((toSum * fromFrom - fromSum * fromTo) / determinant * scale + 0.5));
    return true;
}

void improveChannel(const Places& places, std::size_t channel, BlockFit& fit) {
    int centreFrom = fit.from[channel];
    int centreTo = fit.to[channel];
    solveChannel(places, channel, fit.parts, centreFrom, centreTo);
    int bestCost = channelCost(places, channel, fit.parts, fit.from[channel], fit.to[channel]);
    const int largest = largestSteps[channel];
    for (int from = std::max(0, centreFrom - 2); from <= std::min(largest, centreFrom + 2); ++from) {
        for (int to = std::max(0, centreTo - 2); to <= std::min(largest, centreTo + 2); ++to) {
            const int cost = channelCost(places, channel, fit.parts, from, to);
            if (cost < bestCost) {
                bestCost = cost;
                fit.from[channel] = from;
                fit.to[channel] = to;
            }
        }
    }
}

/// Alternates between placing the colours and moving the ends until that changes nothing.
void settle(const BlockColours& colours, BlockFit& fit) {
    for (int round = 0; round < 8; ++round) {
        const Places places = placesOf(colours, fit);
        BlockFit next = fit;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            improveChannel(places, channel, next);
        }
        next.error = fitError(colours, next);
        if (!isBetter(next, fit)) {
            return;
        }
        fit = next;
    }
}

/// Moves of the two ends, in steps of each channel: (red, green, blue) of one end, then of the other.
struct Move {
    ColourSteps from;
    ColourSteps to;
};

constexpr std::array<Move, 30> moves = {{
    // One channel of one end.
    {{1, 0, 0}, {0, 0, 0}},
    {{-1, 0, 0}, {0, 0, 0}},
    {{0, 1, 0}, {0, 0, 0}},
    {{0, -1, 0}, {0, 0, 0}},
    {{0, 0, 1}, {0, 0, 0}},
    {{0, 0, -1}, {0, 0, 0}},
    {{0, 0, 0}, {1, 0, 0}},
    {{0, 0, 0}, {-1, 0, 0}},
    {{0, 0, 0}, {0, 1, 0}},
    {{0, 0, 0}, {0, -1, 0}},
    {{0, 0, 0}, {0, 0, 1}},
    {{0, 0, 0}, {0, 0, -1}},
    // One channel of both ends, together and against each other.
    {{1, 0, 0}, {1, 0, 0}},
    {{-1, 0, 0}, {-1, 0, 0}},
    {{1, 0, 0}, {-1, 0, 0}},
    {{-1, 0, 0}, {1, 0, 0}},
    {{0, 1, 0}, {0, 1, 0}},
    {{0, -1, 0}, {0, -1, 0}},
    {{0, 1, 0}, {0, -1, 0}},
    {{0, -1, 0}, {0, 1, 0}},
    {{0, 0, 1}, {0, 0, 1}},
    {{0, 0, -1}, {0, 0, -1}},
    {{0, 0, 1}, {0, 0, -1}},
    {{0, 0, -1}, {0, 0, 1}},
    // Lightness of one end and of both; green has steps of half the size.
    {{1, 2, 1}, {0, 0, 0}},
    {{-1, -2, -1}, {0, 0, 0}},
    {{0, 0, 0}, {1, 2, 1}},
    {{0, 0, 0}, {-1, -2, -1}},
    {{1, 2, 1}, {-1, -2, -1}},
    {{-1, -2, -1}, {1, 2, 1}},
}};

bool shift(ColourSteps& steps, const ColourSteps& by) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
        steps[channel] += by[channel];
        if (steps[channel] < 0 || steps[channel] > largestSteps[channel]) {
            return false;
        }
    }
    return true;
}

} // namespace

BlockFit refineFit(const BlockColours& colours, const BlockFit& start) {
    BlockFit best = start;
    best.error = fitError(colours, best);
    settle(colours, best);
    bool improved = best.error > 0;
    while (improved) {
        improved = false;
        for (const Move& move : std::span(moves)) {
            BlockFit next = best;
            if (!shift(next.from, move.from) || !shift(next.to, move.to)) {
                continue;
            }
            next.error = fitError(colours, next);
            if (next.error < best.error) {
                best = next;
                settle(colours, best);
                improved = best.error > 0;
            }
        }
    }
    return best;
}

} // namespace dunkman
