#include "render/cover.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>

#include "base/frame_state.h"

namespace dunkman {
namespace {

constexpr double leastSide = 16.0; // pixels; what is smaller hides little

bool isFloat(double number) { return static_cast<double>(static_cast<float>(number)) == number; }

// The lower and the upper edge of a quad along one axis, as the shader adds them up.
struct Edges {
    double low;
    double high;
    bool lowIsExact; // the shader gets just this number, whichever way OpenGL rounds
    bool highIsExact;
};

Edges edgesOf(float position, float offset, float size) {
    const double far = static_cast<double>(offset) + static_cast<double>(size);
    const double low = static_cast<double>(position) + static_cast<double>(offset);
    const double high = static_cast<double>(position) + far;
    return {low, high, isFloat(low), isFloat(far) && isFloat(high)};
}

// Places along one axis of the picture. Sections of ground join without a gap where the shader gets the same number for
// the edges of both; any other edge may lie a little further in.
struct Span {
    double begin;
    double end;
};

Span inPicture(const Edges& edges, double scale, double shift) {
    return {edges.low * scale + shift + (edges.lowIsExact ? 0.0 : 1.0),
            edges.high * scale + shift - (edges.highIsExact ? 0.0 : 1.0)};
}

} // namespace

Cover::Cover(const Matrix4& view) : viewProjection(view), plane(planeInPicture(view)) {
    // Edges along the sides of the picture, or nothing is known.
    if (plane && (plane->rightward.y != 0.0 || plane->upward.x != 0.0)) {
        plane.reset();
    }
}

void Cover::add(const Sprite& sprite) {
    const Texture2D& texture = sprite.texture;
    if (texture.coverage.front().opaqueEnd == 0 || sprite.angle != 0.0 || count == parts.size() || !plane) {
        return;
    }
    Vec2 pivot = sprite.pivot;
    if (sprite.mirrorX) {
        pivot.x = 1.0 - pivot.x;
    }
    const Placement placement = placementOf(sprite.position, sprite.size, pivot, sprite.scale, sprite.angle);
    const std::optional<Footprint> footprint = footprintOf(placement, viewProjection);
    if (!footprint || !(footprint->across.x > 0.0) || !(footprint->up.y > 0.0)) {
        return;
    }
    const TextureCoverage rows = coverageAt(texelsPerPixel(*footprint, texture), texture);
    const auto& [dest, place] = placement;
    const Edges x = edgesOf(place[0], dest[0], dest[2]);
    Edges y = edgesOf(place[1], dest[1], dest[3]);
    const double texelHeight = static_cast<double>(dest[3]) / static_cast<double>(texture.height);
    const std::uint32_t below = sprite.mirrorY ? texture.height - rows.opaqueEnd : rows.opaqueBegin;
    const std::uint32_t above = sprite.mirrorY ? rows.opaqueBegin : texture.height - rows.opaqueEnd;
    y.lowIsExact = y.lowIsExact && below == 0;
    y.highIsExact = y.highIsExact && above == 0;
    y.low += static_cast<double>(below) * texelHeight;
    y.high -= static_cast<double>(above) * texelHeight;

    const auto width = static_cast<double>(frameState.clientWidth);
    const auto height = static_cast<double>(frameState.clientHeight);
    const Span across = inPicture(x, plane->rightward.x, plane->origin.x);
    const Span up = inPicture(y, plane->upward.y, plane->origin.y);
    const Rect part = {std::max(across.begin, 0.0), std::max(up.begin, 0.0), std::min(across.end, width),
                       std::min(up.end, height)};
    if (part.maxX - part.minX >= leastSide && part.maxY - part.minY >= leastSide) {
        parts[count] = part;
        ++count;
    }
}

PixelRect Cover::uncovered() const {
    const auto width = static_cast<double>(frameState.clientWidth);
    const auto height = static_cast<double>(frameState.clientHeight);
    std::array<Rect, mostParts> sorted = parts;
    const std::span<Rect> fromLeft = std::span(sorted).first(count);
    std::sort(fromLeft.begin(), fromLeft.end(),
              [](const Rect& left, const Rect& right) { return left.minX < right.minX; });
    // Between two neighbours of these heights every part is either all there or not at all.
    std::array<double, 2 * mostParts + 2> heights;
    std::size_t heightCount = 0;
    for (const Rect& part : fromLeft) {
        heights[heightCount++] = part.minY;
        heights[heightCount++] = part.maxY;
    }
    heights[heightCount++] = 0.0;
    heights[heightCount++] = height;
    std::sort(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(heightCount));

    constexpr double nowhere = std::numeric_limits<double>::infinity();
    Rect gaps = {nowhere, nowhere, -nowhere, -nowhere};
    for (std::size_t row = 0; row + 1 < heightCount; ++row) {
        const double bottom = heights[row];
        const double top = heights[row + 1];
        double reached = 0.0;
        const auto leaveGap = [&](double until) {
            if (reached < until && bottom < top) {
                gaps = {std::min(gaps.minX, reached), std::min(gaps.minY, bottom), std::max(gaps.maxX, until),
                        std::max(gaps.maxY, top)};
            }
        };
        for (const Rect& part : fromLeft) {
            if (part.minY <= bottom && part.maxY >= top) {
                leaveGap(part.minX);
                reached = std::max(reached, part.maxX);
            }
        }
        leaveGap(width);
    }
    if (gaps.minX == nowhere) {
        return {};
    }
    // A pixel more on every side: what is known of places here is not known to the last bit.
    const double left = std::max(std::floor(gaps.minX) - 1.0, 0.0);
    const double low = std::max(std::floor(gaps.minY) - 1.0, 0.0);
    return {static_cast<std::int32_t>(left), static_cast<std::int32_t>(low),
            static_cast<std::int32_t>(std::min(std::ceil(gaps.maxX) + 1.0, width) - left),
            static_cast<std::int32_t>(std::min(std::ceil(gaps.maxY) + 1.0, height) - low)};
}

} // namespace dunkman
