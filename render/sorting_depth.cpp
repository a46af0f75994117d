#include "render/sorting_depth.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace dunkman {
namespace {

// As in drawable_basic.vert.
constexpr double depthRange = 100.0;
constexpr double depthScale = 1.0 / 256.0;
constexpr double nearest = -1.0;
constexpr double farthest = 0.9999;

// A depth buffer of 24 bits has steps of 1.2e-7, and a float near 1 half as much.
constexpr double leeway = 1e-5;

double sortingDepth(double depth, bool isOverlay, const Matrix4& view) {
    const auto entry = [&view](std::size_t index) { return static_cast<double>(view[index]); };
    double sorted = 0.0;
    if (entry(11) == 0.0) {
        sorted = entry(10) * depth + entry(14);
    } else if (isOverlay) {
        sorted = 0.1 - std::clamp(depth, -1.0, 1.0) * 0.009;
    } else {
        sorted = 0.5 - std::clamp(depth, -depthRange, depthRange) * depthScale;
    }
    return std::clamp(sorted, nearest, farthest);
}

struct Heights {
    double lowest;
    double highest;
};

// Between which a quad lies, whichever way it is turned.
Heights heightsOf(const Placement& placement) {
    const auto dest = [&placement](std::size_t index) {
        return static_cast<double>(placement.destMinAndSize[index]);
    };
    const auto place = [&placement](std::size_t index) {
        return static_cast<double>(placement.posCosSin[index]);
    };
    const auto heightOf = [&](double across, double up) {
        return place(1) + place(2) * (dest(1) + up * dest(3)) - place(3) * (dest(0) + across * dest(2));
    };
    const auto [lowest, highest] =
        std::minmax({heightOf(0.0, 0.0), heightOf(1.0, 0.0), heightOf(0.0, 1.0), heightOf(1.0, 1.0)});
    return {lowest, highest};
}

} // namespace

DepthRange depthRangeOf(SpriteMode mode, const Placement& placement, double zOffset, const Matrix4& view) {
    const auto flags = static_cast<std::uint32_t>(mode);
    const bool isOverlay = (flags & static_cast<std::uint32_t>(SpriteMode::Interface)) != 0;
    const bool isFlat = (flags & static_cast<std::uint32_t>(SpriteMode::Flat)) != 0;
    Heights heights = {0.0, 0.0}; // that count: what stands lower is nearer
    if (!isOverlay && isFlat) {
        heights = heightsOf(placement);
    } else if (!isOverlay) {
        heights.lowest = heights.highest = static_cast<double>(placement.posCosSin[1]);
    }
    const double offset = isOverlay && isFlat ? 0.0 : zOffset;
    const auto [least, most] = std::minmax({sortingDepth(offset - heights.lowest, isOverlay, view),
                                            sortingDepth(offset - heights.highest, isOverlay, view)});
    return {least - leeway, most + leeway};
}

} // namespace dunkman
