#include "render/placement.h"

#include "exact/exact_math.h"

namespace dunkman {
namespace {

template <typename... Numbers> std::array<float, sizeof...(Numbers)> floatsOf(Numbers... numbers) {
    return {static_cast<float>(numbers)...};
}

} // namespace

Placement placementOf(Vec2 position, Vec2 size, Vec2 pivot, Vec2 scale, double angle) {
    const double width = scale.x * size.x;
    const double height = scale.y * size.y;
    const double radians = clockwiseRadians(angle);
    // The minus signs stand outside the products: a pivot of 0 gives -0.0.
    return {floatsOf(-(pivot.x * width), -(pivot.y * height), width, height),
            floatsOf(position.x, position.y, exactCos(radians), exactSin(radians))};
}

} // namespace dunkman
