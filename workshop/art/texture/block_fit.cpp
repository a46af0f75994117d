#include "workshop/art/texture/block_fit.h"

namespace dunkman {

namespace {

int squaredDistance(const std::array<int, 3>& one, const std::array<int, 3>& other) {
    int sum = 0;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const int difference = one[channel] - other[channel];
        sum += difference * difference;
    }
    return sum;
}

int spread(const BlockFit& fit) {
    const LineColours line = lineColours(fit);
    return squaredDistance(line[0], line[static_cast<std::size_t>(fit.parts)]);
}

} // namespace

LineColours lineColours(const BlockFit& fit) {
    LineColours line = {};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const int from = expandChannel(static_cast<int>(channel), fit.from[channel]);
        const int to = expandChannel(static_cast<int>(channel), fit.to[channel]);
        for (int part = 0; part <= fit.parts; ++part) {
            line[static_cast<std::size_t>(part)][channel] = blendChannel(from, to, part, fit.parts);
        }
    }
    return line;
}

std::size_t nearestOnLine(const LineColours& line, int parts, const std::array<int, 3>& channels) {
    std::size_t nearest = 0;
    int nearestDistance = squaredDistance(line[0], channels);
    for (std::size_t part = 1; part <= static_cast<std::size_t>(parts); ++part) {
        const int distance = squaredDistance(line[part], channels);
        if (distance < nearestDistance) {
            nearest = part;
            nearestDistance = distance;
        }
    }
    return nearest;
}

std::int64_t fitError(const BlockColours& colours, const BlockFit& fit) {
    const LineColours line = lineColours(fit);
    std::int64_t error = 0;
    for (std::size_t entry = 0; entry < colours.count; ++entry) {
        const BlockColours::Entry& colour = colours.entries[entry];
        const std::size_t nearest = nearestOnLine(line, fit.parts, colour.channels);
        error += static_cast<std::int64_t>(colour.weight) * squaredDistance(line[nearest], colour.channels);
    }
    return error;
}

bool isBetter(const BlockFit& candidate, const BlockFit& best) {
    if (candidate.error != best.error) {
        return candidate.error < best.error;
    }
    return best.error != INT64_MAX && spread(candidate) < spread(best);
}

} // namespace dunkman
