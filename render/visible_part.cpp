#include "render/visible_part.h"

#include <algorithm>
#include <cmath>

#include "base/frame_state.h"

namespace dunkman {
namespace {

// Pixels that must be spared. Three calls of OpenGL cost about as much as drawing some dozens.
constexpr double leastGain = 500.0;

// The smallest upright rectangle around a part of a quad, in pixels of the picture, those that it only touches included.
Rect boxAround(const Footprint& footprint, double fromU, double fromV, double toU, double toV) {
    const auto [minX, maxX] = std::minmax({footprint.at(fromU, fromV).x, footprint.at(toU, fromV).x,
                                           footprint.at(fromU, toV).x, footprint.at(toU, toV).x});
    const auto [minY, maxY] = std::minmax({footprint.at(fromU, fromV).y, footprint.at(toU, fromV).y,
                                           footprint.at(fromU, toV).y, footprint.at(toU, toV).y});
    const auto width = static_cast<double>(frameState.clientWidth);
    const auto height = static_cast<double>(frameState.clientHeight);
    return {std::clamp(std::floor(minX) - 1.0, 0.0, width), std::clamp(std::floor(minY) - 1.0, 0.0, height),
            std::clamp(std::ceil(maxX) + 1.0, 0.0, width), std::clamp(std::ceil(maxY) + 1.0, 0.0, height)};
}

double areaOf(const Rect& box) { return (box.maxX - box.minX) * (box.maxY - box.minY); }

bool hasBorders(const TextureCoverage& coverage) {
    return (coverage.left | coverage.top | coverage.right | coverage.bottom) != 0;
}

} // namespace

std::optional<PixelRect> visiblePart(const Texture2D& texture, bool mirrorX, bool mirrorY,
                                     const Placement& placement, const Matrix4& view) {
    if (!hasBorders(texture.coverage.front())) {
        return std::nullopt;
    }
    const std::optional<Footprint> footprint = footprintOf(placement, view);
    if (!footprint) {
        return std::nullopt;
    }
    const Rect quad = boxAround(*footprint, 0.0, 0.0, 1.0, 1.0);
    // Written so that what is no number does not pay either.
    if (!(areaOf(quad) >= leastGain)) {
        return std::nullopt;
    }
    const TextureCoverage seen = coverageAt(texelsPerPixel(*footprint, texture), texture);
    const auto width = static_cast<double>(texture.width);
    const auto height = static_cast<double>(texture.height);
    // The quad's corner (0, 0) shows the first texel of the first row, unless it is mirrored.
    const double fromU = (mirrorX ? seen.right : seen.left) / width;
    const double toU = 1.0 - (mirrorX ? seen.left : seen.right) / width;
    const double fromV = (mirrorY ? seen.bottom : seen.top) / height;
    const double toV = 1.0 - (mirrorY ? seen.top : seen.bottom) / height;
    const Rect part = boxAround(*footprint, fromU, fromV, toU, toV);
    if (!(areaOf(quad) - areaOf(part) >= leastGain)) {
        return std::nullopt;
    }
    return PixelRect{static_cast<std::int32_t>(part.minX), static_cast<std::int32_t>(part.minY),
                     static_cast<std::int32_t>(part.maxX - part.minX),
                     static_cast<std::int32_t>(part.maxY - part.minY)};
}

} // namespace dunkman
