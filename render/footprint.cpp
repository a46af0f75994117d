#include "render/footprint.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "base/frame_state.h"

namespace dunkman {

std::optional<PlaneInPicture> planeInPicture(const Matrix4& view) {
    const auto entry = [&view](std::size_t index) { return static_cast<double>(view[index]); };
    const double w = entry(15);
    if (!(w > 0.0) || view[3] != 0.0f || view[7] != 0.0f || frameState.clientWidth == 0) {
        return std::nullopt;
    }
    const double pixelsX = 0.5 * static_cast<double>(frameState.clientWidth);
    const double pixelsY = 0.5 * static_cast<double>(frameState.clientHeight);
    return PlaneInPicture{{(entry(12) / w + 1.0) * pixelsX, (entry(13) / w + 1.0) * pixelsY},
                          {entry(0) / w * pixelsX, entry(1) / w * pixelsY},
                          {entry(4) / w * pixelsX, entry(5) / w * pixelsY}};
}

std::optional<Footprint> footprintOf(const Placement& placement, const Matrix4& view) {
    const std::optional<PlaneInPicture> plane = planeInPicture(view);
    return plane ? std::optional(footprintOf(placement, *plane)) : std::nullopt;
}

Footprint footprintOf(const Placement& placement, const PlaneInPicture& plane) {
    const auto way = [&plane](double x, double y) {
        return Vec2{plane.rightward.x * x + plane.upward.x * y, plane.rightward.y * x + plane.upward.y * y};
    };
    const auto dest = [&placement](std::size_t index) {
        return static_cast<double>(placement.destMinAndSize[index]);
    };
    const auto place = [&placement](std::size_t index) {
        return static_cast<double>(placement.posCosSin[index]);
    };
    const auto turned = [&](double x, double y) {
        return way(place(2) * x + place(3) * y, place(2) * y - place(3) * x);
    };
    const Vec2 position = way(place(0), place(1));
    const Vec2 toCorner = turned(dest(0), dest(1));
    return {{plane.origin.x + position.x + toCorner.x, plane.origin.y + position.y + toCorner.y},
            turned(dest(2), 0.0),
            turned(0.0, dest(3))};
}

double texelsPerPixel(const Footprint& footprint, const Texture2D& texture) {
    const auto& [corner, across, up] = footprint;
    const double area = across.x * up.y - across.y * up.x;
    if (area == 0.0) {
        return std::numeric_limits<double>::infinity();
    }
    // How far a step of one pixel, to the right and up, goes along the rows and columns of texels.
    const double width = static_cast<double>(texture.width) / area;
    const double height = static_cast<double>(texture.height) / area;
    const auto squareOf = [](double x, double y) { return x * x + y * y; };
    return std::sqrt(std::max(squareOf(up.y * width, across.y * height),   // to the right
                              squareOf(up.x * width, across.x * height))); // upward
}

TextureCoverage coverageAt(double texelsPerPixel, const CoverageByLevel& coverage) {
    // Drivers may take a scale that is a little larger than the true one, where a sprite is turned by up to the root of 2.
    double reach = texelsPerPixel * 1.415;
    for (const TextureCoverage& level : coverage) {
        if (reach <= 1.0) {
            return level;
        }
        reach *= 0.5;
    }
    return {};
}

} // namespace dunkman
