#pragma once

#include "base/geometry.h"

namespace dunkman {

// `low` must not be above 0 nor `high` below it: NaN, which a division by a duration of 0 can bring, becomes
// 0. A value inside the range is returned as it is.
constexpr double clamp(double value, double low, double high) {
    if (value != value) {
        return 0.0;
    }
    return value < low ? low : (value > high ? high : value);
}

// -1, 0 or +1.
constexpr double signOf(double value) { return value > 0.0 ? 1.0 : (value < 0.0 ? -1.0 : 0.0); }

// Touching edges do not overlap.
constexpr bool overlap(const Rect& first, const Rect& second) {
    return first.maxX > second.minX && second.maxX > first.minX && first.maxY > second.minY &&
           second.maxY > first.minY;
}

} // namespace dunkman
