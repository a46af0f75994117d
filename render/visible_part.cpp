#include "render/visible_part.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "base/frame_state.h"

namespace dunkman {
namespace {

// Pixels that a part must spare. Its calls of OpenGL cost about as much as drawing some dozens.
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

PixelRect pixelsOf(const Rect& box) {
    return {static_cast<std::int32_t>(box.minX), static_cast<std::int32_t>(box.minY),
            static_cast<std::int32_t>(box.maxX - box.minX), static_cast<std::int32_t>(box.maxY - box.minY)};
}

// All parts in one.
TextureCoverage together(const TextureCoverage& coverage) {
    TextureCoverage one;
    one.count = 1;
    TexelRect& around = one.parts[0];
    around = coverage.parts[0];
    for (std::size_t part = 1; part < coverage.count; ++part) {
        around.left = std::min(around.left, coverage.parts[part].left);
        around.right = std::max(around.right, coverage.parts[part].right);
        around.bottom = coverage.parts[part].bottom;
    }
    return one;
}

} // namespace

VisibleParts visibleParts(const Texture2D& texture, const CoverageByLevel& coverage, bool mirrorX,
                          bool mirrorY, const Placement& placement, const Matrix4& view) {
    const std::optional<Footprint> footprint = footprintOf(placement, view);
    if (!footprint) {
        return {};
    }
    const Rect quad = boxAround(*footprint, 0.0, 0.0, 1.0, 1.0);
    // Written so that what is no number does not pay either.
    if (!(areaOf(quad) >= leastGain)) {
        return {};
    }
    TextureCoverage seen = coverageAt(texelsPerPixel(*footprint, texture), coverage);
    if (seen.count == 0) {
        return {};
    }
    const auto width = static_cast<double>(texture.width);
    const auto height = static_cast<double>(texture.height);
    const auto boxOf = [&](const TexelRect& part) {
        // The quad's corner (0, 0) shows the first texel of the first row, unless it is mirrored.
        const double left = part.left / width;
        const double right = part.right / width;
        const double top = part.top / height;
        const double bottom = part.bottom / height;
        return boxAround(*footprint, mirrorX ? 1.0 - right : left, mirrorY ? 1.0 - bottom : top,
                         mirrorX ? 1.0 - left : right, mirrorY ? 1.0 - top : bottom);
    };
    const auto priceOf = [&boxOf](const TextureCoverage& parts) {
        double pixels = parts.count * leastGain;
        for (std::size_t part = 0; part < parts.count; ++part) {
            pixels += areaOf(boxOf(parts.parts[part]));
        }
        return pixels;
    };
    // Upright boxes around turned parts would lie over each other.
    const bool isTurned = placement.posCosSin[3] != 0.0f;
    if (const TextureCoverage one = together(seen); isTurned || priceOf(one) <= priceOf(seen)) {
        seen = one;
    }
    if (!(priceOf(seen) <= areaOf(quad))) {
        return {};
    }
    VisibleParts visible;
    visible.count = seen.count;
    for (std::size_t part = 0; part < seen.count; ++part) {
        visible.parts[part] = pixelsOf(boxOf(seen.parts[part]));
    }
    return visible;
}

} // namespace dunkman
