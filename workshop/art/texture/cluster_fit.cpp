#include "workshop/art/texture/cluster_fit.h"

#include <algorithm>
#include <cmath>

namespace dunkman {

namespace {

using Vector = std::array<double, 3>;

double dot(const Vector& one, const Vector& other) {
    return one[0] * other[0] + one[1] * other[1] + one[2] * other[2];
}

Vector toVector(const std::array<int, 3>& channels) {
    return {static_cast<double>(channels[0]), static_cast<double>(channels[1]),
            static_cast<double>(channels[2])};
}

/// The direction in which the colours differ most: eight rounds of power iteration on their covariance.
Vector principalAxis(const BlockColours& colours) {
    double weight = 0.0;
    Vector mean = {};
    for (std::size_t entry = 0; entry < colours.count; ++entry) {
        const BlockColours::Entry& colour = colours.entries[entry];
        weight += colour.weight;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            mean[channel] += colour.weight * static_cast<double>(colour.channels[channel]);
        }
    }
    for (double& value : mean) {
        value /= weight;
    }
    std::array<Vector, 3> covariance = {};
    for (std::size_t entry = 0; entry < colours.count; ++entry) {
        const BlockColours::Entry& colour = colours.entries[entry];
        Vector offset = toVector(colour.channels);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            offset[channel] -= mean[channel];
        }
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                covariance[row][column] += colour.weight * offset[row] * offset[column];
            }
        }
    }
    // Start from the longest row: it cannot be at right angles to the axis.
    Vector axis =
        *std::max_element(covariance.begin(), covariance.end(), [](const Vector& one, const Vector& other) {
            return dot(one, one) < dot(other, other);
        });
    for (int round = 0; round < 8; ++round) {
        const Vector next = {dot(covariance[0], axis), dot(covariance[1], axis), dot(covariance[2], axis)};
        const double length = std::sqrt(dot(next, next));
        if (length <= 0.0) {
            break;
        }
        axis = {next[0] / length, next[1] / length, next[2] / length};
    }
    return axis;
}

using Order = std::array<std::uint8_t, 16>;

Order orderAlong(const BlockColours& colours, const Vector& axis) {
    Order order = {};
    std::array<double, 16> along = {};
    for (std::size_t entry = 0; entry < colours.count; ++entry) {
        order[entry] = static_cast<std::uint8_t>(entry);
        along[entry] = dot(toVector(colours.entries[entry].channels), axis);
    }
    std::stable_sort(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(colours.count),
                     [&](std::uint8_t one, std::uint8_t other) { return along[one] < along[other]; });
    return order;
}

/// Weight and weighted colour of the first 0, 1, 2 ... colours of an order.
struct RunningSums {
    std::array<double, 17> weight = {};
    std::array<Vector, 17> colour = {};
    double squares = 0.0;
};

RunningSums runningSums(const BlockColours& colours, const Order& order) {
    RunningSums sums;
    for (std::size_t place = 0; place < colours.count; ++place) {
        const BlockColours::Entry& colour = colours.entries[order[place]];
        const Vector value = toVector(colour.channels);
        sums.weight[place + 1] = sums.weight[place] + colour.weight;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            sums.colour[place + 1][channel] = sums.colour[place][channel] + colour.weight * value[channel];
        }
        sums.squares += colour.weight * dot(value, value);
    }
    return sums;
}

int roundToSteps(std::size_t channel, double value) {
    const double scaled = value * static_cast<double>(largestSteps[channel]) / 255.0;
    return std::clamp(static_cast<int>(std::floor(scaled + 0.5)), 0, largestSteps[channel]);
}

/// Least squares for one way of cutting the order: run `part` holds the colours from cuts[part] up to
/// cuts[part + 1]. False when the runs do not determine two ends.
bool solveCut(const RunningSums& sums, const std::array<std::size_t, 5>& cuts, BlockFit& fit,
              double& estimate) {
    double fromFrom = 0.0;
    double toTo = 0.0;
    double fromTo = 0.0;
    Vector fromColour = {};
    Vector toColour = {};
    const auto parts = static_cast<std::size_t>(fit.parts);
    for (std::size_t part = 0; part <= parts; ++part) {
        const double share = static_cast<double>(part) / static_cast<double>(parts);
        const double rest = 1.0 - share;
        const double weight = sums.weight[cuts[part + 1]] - sums.weight[cuts[part]];
        fromFrom += rest * rest * weight;
        toTo += share * share * weight;
        fromTo += share * rest * weight;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double colour = sums.colour[cuts[part + 1]][channel] - sums.colour[cuts[part]][channel];
            fromColour[channel] += rest * colour;
            toColour[channel] += share * colour;
        }
    }
    const double determinant = fromFrom * toTo - fromTo * fromTo;
    if (determinant < 1e-9) {
        return false;
    }
    estimate = sums.squares;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double from = (fromColour[channel] * toTo - toColour[channel] * fromTo) / determinant;
        const double to = (toColour[channel] * fromFrom - fromColour[channel] * fromTo) / determinant;
        fit.from[channel] = roundToSteps(channel, from);
        fit.to[channel] = roundToSteps(channel, to);
        const double start = expandChannel(static_cast<int>(channel), fit.from[channel]);
        const double end = expandChannel(static_cast<int>(channel), fit.to[channel]);
        estimate += start * start * fromFrom + end * end * toTo + 2.0 * start * end * fromTo -
                    2.0 * (start * fromColour[channel] + end * toColour[channel]);
    }
    return true;
}

/// The best fits met so far, sorted, without repeats.
class Shortlist {
public:
    explicit Shortlist(std::size_t longest) : limit(longest) {}

    void offer(const BlockFit& fit) {
        if (list.size() == limit && fit.error >= list.back().error) {
            return;
        }
        for (const BlockFit& known : list) {
            if (known.from == fit.from && known.to == fit.to) {
                return;
            }
        }
        const auto place =
            std::upper_bound(list.begin(), list.end(), fit, [](const BlockFit& one, const BlockFit& other) {
                return one.error < other.error;
            });
        list.insert(place, fit);
        if (list.size() > limit) {
            list.pop_back();
        }
    }

    const std::vector<BlockFit>& fits() const { return list; }

private:
    std::size_t limit;
    std::vector<BlockFit> list;
};

void offerCut(const RunningSums& sums, const std::array<std::size_t, 5>& cuts, int parts,
              Shortlist& shortlist) {
    BlockFit fit;
    fit.parts = parts;
    double estimate = 0.0;
    if (solveCut(sums, cuts, fit, estimate)) {
        fit.error = static_cast<std::int64_t>(std::floor(estimate * 16.0));
        shortlist.offer(fit);
    }
}

void offerAllCuts(const BlockColours& colours, const Order& order, int parts, Shortlist& shortlist) {
    const RunningSums sums = runningSums(colours, order);
    const std::size_t count = colours.count;
    for (std::size_t first = 0; first <= count; ++first) {
        for (std::size_t second = first; second <= count; ++second) {
            if (parts == 2) {
                offerCut(sums, {0, first, second, count, count}, parts, shortlist);
                continue;
            }
            for (std::size_t third = second; third <= count; ++third) {
                offerCut(sums, {0, first, second, third, count}, parts, shortlist);
            }
        }
    }
}

} // namespace

std::vector<BlockFit> clusterFits(const BlockColours& colours, int parts, std::size_t wanted) {
    Shortlist shortlist(wanted);
    std::vector<Order> tried;
    Vector axis = principalAxis(colours);
    for (int round = 0; round < 4; ++round) {
        const Order order = orderAlong(colours, axis);
        if (std::find(tried.begin(), tried.end(), order) != tried.end()) {
            break;
        }
        tried.push_back(order);
        offerAllCuts(colours, order, parts, shortlist);
        if (shortlist.fits().empty()) {
            break;
        }
        const LineColours line = lineColours(shortlist.fits().front());
        const Vector from = toVector(line[0]);
        const Vector to = toVector(line[static_cast<std::size_t>(parts)]);
        axis = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
    }
    return shortlist.fits();
}

} // namespace dunkman
