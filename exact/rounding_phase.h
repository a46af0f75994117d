#pragma once

#include "exact/double_double.h"

#include <optional>

// The step between the two phases of an exact function (Ziv): most results need only the first.
namespace dunkman {

// The double nearest to the true value, if that is known to lie within relativeError of the approximation and
// the nearest double is the same all over that range. The caller's bound leaves room for this function's own
// rounding, which is below 2^-104.
inline std::optional<double> roundIfCertain(DoubleDouble approximation, double relativeError) {
    const double margin =
        relativeError * (approximation.high < 0.0 ? -approximation.high : approximation.high);
    const double least = approximation.high + (approximation.low - margin);
    const double most = approximation.high + (approximation.low + margin);
    if (least == most) {
        return least;
    }
    return std::nullopt;
}

// The whole number nearest to a, for |a| below 2^51: adding 1.5 * 2^52 leaves no bits for a fraction.
inline double roundToWhole(double a) {
    constexpr double noFraction = 6755399441055744.0;
    return (a + noFraction) - noFraction;
}

} // namespace dunkman
