#include "exact/triple_double.h"

#include <bit>
#include <cstdint>

namespace dunkman {
namespace {

// In the bounds below u is 2^-53, so that |middle| <= u |high| and |low| <= u |middle|.

// Makes three overlapping parts, the largest first, a proper triple of the same value.
TripleDouble normalised(double high, double middle, double low) {
    const DoubleDouble tail = twoSum(middle, low);
    const DoubleDouble head = twoSum(high, tail.high);
    const DoubleDouble rest = twoSum(head.low, tail.low);
    return {head.high, rest.high, rest.low};
}

// high + rest cut to a double in such a way that rounding it again, at least two bits shorter, gives what
// rounding the sum at once would: an inexact result always has an odd last bit, so it never looks like a tie.
double roundToOdd(double high, double rest) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(high);
    if (rest == 0.0 || (bits & 1u) != 0) {
        return high;
    }
    const bool awayFromZero = (rest > 0.0) == (high > 0.0);
    return std::bit_cast<double>(awayFromZero ? bits + 1 : bits - 1);
}

} // namespace

// The two upper sums are exact. The lower one adds four parts of at most 2 u^2 (|a| + |b|) in three
// operations.
TripleDouble operator+(TripleDouble a, TripleDouble b) {
    const DoubleDouble high = twoSum(a.high, b.high);
    const DoubleDouble middle = twoSum(a.middle, b.middle);
    const DoubleDouble second = twoSum(middle.high, high.low);
    return normalised(high.high, second.high, (a.low + b.low) + (middle.low + second.low));
}

TripleDouble operator-(TripleDouble a, TripleDouble b) { return a + -b; }

// Products of weight 1 and u are exact. Those of weight u^2, 9 u^2 in all, are added in six operations and
// come from three rounded products; those of weight u^3 are left out: less than 64 u^3 together.
TripleDouble operator*(TripleDouble a, TripleDouble b) {
    const DoubleDouble highest = twoProduct(a.high, b.high);
    const DoubleDouble upper = twoProduct(a.high, b.middle);
    const DoubleDouble lower = twoProduct(a.middle, b.high);
    const DoubleDouble crossing = twoSum(upper.high, lower.high);
    const DoubleDouble second = twoSum(crossing.high, highest.low);
    const double third = ((a.high * b.low + a.low * b.high) + a.middle * b.middle) +
                         ((upper.low + lower.low) + (crossing.low + second.low));
    return normalised(highest.high, second.high, third);
}

// Long division, one double at a time: each digit leaves about u of the remainder before it.
TripleDouble operator/(TripleDouble a, TripleDouble b) {
    const double first = a.high / b.high;
    TripleDouble remainder = a - TripleDouble{first} * b;
    const double second = remainder.high / b.high;
    remainder = remainder - TripleDouble{second} * b;
    return normalised(first, second, remainder.high / b.high);
}

double roundToDouble(TripleDouble a) { return a.high + roundToOdd(a.middle, a.low); }

float roundToFloat(TripleDouble a) { return static_cast<float>(roundToOdd(a.high, a.middle)); }

} // namespace dunkman
