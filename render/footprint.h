#pragma once

#include <cstdint>
#include <optional>

#include "base/geometry.h"
#include "render/placement.h"
#include "render/texture.h"
#include "render/texture_coverage.h"
#include "render/view.h"

namespace dunkman {

// A rectangle of whole pixels, counted from the lower left corner of the picture.
struct PixelRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

// Where the quad of a sprite lies in the picture, in pixels as the vertex shader places it, but for the rounding of
// OpenGL's arithmetic: less than a tenth of a pixel.
struct Footprint {
    Vec2 corner; // where its corner (0, 0) lands
    Vec2 across; // from there to its corner (1, 0)
    Vec2 up;     // from there to its corner (0, 1)

    Vec2 at(double u, double v) const {
        return {corner.x + u * across.x + v * up.x, corner.y + u * across.y + v * up.y};
    }
};

// The plane in which all sprites lie, z = 0, as a view shows it: the pixels from the lower left corner of the picture.
struct PlaneInPicture {
    Vec2 origin;    // where (0, 0) lands
    Vec2 rightward; // the way from there to (1, 0)
    Vec2 upward;    // the way from there to (0, 1)
};

// None while there is no picture, and none where the view looks at the plane askew.
std::optional<PlaneInPicture> planeInPicture(const Matrix4& view);

// The footprint of a quad of that placement. None while there is no picture
// to lie in, and none where the view would turn the quad out of the plane of the picture.
std::optional<Footprint> footprintOf(const Placement& placement, const Matrix4& view);
Footprint footprintOf(const Placement& placement, const PlaneInPicture& plane);

// Texels of the full size that go into a pixel, in the direction in which they are most: OpenGL's scale factor rho.
// Infinite for a quad without area.
double texelsPerPixel(const Footprint& footprint, const Texture2D& texture);

// What is known of a texture's alpha when it is sampled so densely.
TextureCoverage coverageAt(double texelsPerPixel, const CoverageByLevel& coverage);

} // namespace dunkman
