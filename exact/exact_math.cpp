#include "exact/exact_math.h"

#include "exact/argument_reduction.h"
#include "exact/exact_math_tables.h"
#include "exact/powers_of_two.h"
#include "exact/rounding_phase.h"

#include <cstddef>
#include <limits>

// Exponential and arctangent; sine, cosine and tangent stand in exact_trigonometry.cpp.
namespace dunkman {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// In the bounds below u is 2^-53.

// The relative error of the quick exponential. With |r| < 2^-7.5 the tail of e^r - 1 - r is at most 2^-16 and
// off by 3.2 u of that; its product with the table and three additions to the low word give 4 u of 2^-16
// more; the cut of the series 2^-75. Under 2^-65.8 in all.
constexpr double quickExponentialError = 0x1p-65;

// e^(count * ln 2 / 64 + r) = 2^whole * 2^(k / 64) * e^r, with count = 64 * whole + k.
struct SplitExponent {
    double count;
    int whole;
    std::size_t k;
};

SplitExponent split(double exponent) {
    constexpr double sixtyFourByLogarithmOf2 = 92.332482616893657;
    const double count = roundToWhole(exponent * sixtyFourByLogarithmOf2);
    const int number = static_cast<int>(count);
    const int k = number & 63;
    return {count, (number - k) / 64, static_cast<std::size_t>(k)};
}

// value * 2^exponent in two steps, neither of which rounds as long as the result needs no rounding itself.
double scaled(double value, int exponent) {
    const int half = exponent / 2;
    return value * powerOf2(half) * powerOf2(exponent - half);
}

DoubleDouble quickExponential(DoubleDouble r, DoubleDouble power) {
    const double x = r.high;
    const double series =
        0.5 + x * (1.0 / 6.0 + x * (1.0 / 24.0 + x * (1.0 / 120.0 + x * (1.0 / 720.0 + x * (1.0 / 5040.0)))));
    const double tail = x * x * series + (r.low + x * r.low);
    const DoubleDouble product = twoProduct(power.high, x);
    const double low = product.low + (power.high * tail + power.low * x) + power.low;
    const DoubleDouble sum = fastTwoSum(power.high, product.high);
    return fastTwoSum(sum.high, sum.low + low);
}

// The first term left out is r^20 / 20!, below 2^-211; r itself is off by less than 2^-147, and the
// operations add less than 2^-150.
TripleDouble accurateExponential(TripleDouble r, TripleDouble power) {
    TripleDouble sum = inverseFactorials[19];
    for (std::size_t n = 19; n-- > 0;) {
        sum = sum * r + inverseFactorials[n];
    }
    return sum * power;
}

// value * 2^exponent, rounded once although the result may be subnormal. Then the last bit that counts is
// worth 2^(-1074 - exponent) in value, and adding 2^52 such bits makes the sum round right there.
double roundScaled(TripleDouble value, int exponent) {
    if (value.high < 1.0) {
        value = {value.high * 2.0, value.middle * 2.0, value.low * 2.0};
        --exponent;
    }
    if (exponent >= -1022) {
        return scaled(roundToDouble(value), exponent);
    }
    const double bitsAbove = powerOf2(52 - 1074 - exponent);
    return scaled(roundToDouble(TripleDouble{bitsAbove} + value) - bitsAbove, exponent);
}

// The relative error of the quick arctangent. With |t| <= 2^-7 the tail of atan t is at most t / 2^15.5 and
// off by 6 u of that; the low part of t counts with t^2 less than u, 2^-67; the additions give 2 u of the
// tail, the cut of the series 2^-73. The worst case is the table's entry 1, where t can take away half: under
// 2^-64.4 in all.
constexpr double quickArctangentError = 0x1p-63;

// An arctangent between 0 and pi / 2 as base + atan(numerator / denominator), with the quotient at most 2^-7
// in size and both its parts exact.
struct SplitArctangent {
    TripleDouble base;
    DoubleDouble numerator;
    DoubleDouble denominator;
};

// atan x = atan c + atan((x - c) / (1 + c x)) up to 1, with c the nearest k / 64. Above, c is the one nearest
// to 1 / x, and atan x = pi / 2 - atan c - atan((1 / x - c) / (1 + c / x)). c has at most seven bits, so that
// c x, and the sums with it, fit into two doubles.
SplitArctangent splitArctangent(double ratio) {
    const bool inverted = ratio > 1.0;
    const std::size_t k = static_cast<std::size_t>((inverted ? 64.0 / ratio : ratio * 64.0) + 0.5);
    const double c = static_cast<double>(k) / 64.0;
    const DoubleDouble product = twoProduct(c, ratio);
    const DoubleDouble sum = twoSum(inverted ? -1.0 : 1.0, product.high);
    const DoubleDouble unitAndProduct = twoSum(sum.high, sum.low + product.low);
    if (inverted) {
        return {halfPi - arctangents[k], unitAndProduct, twoSum(ratio, c)};
    }
    return {arctangents[k], twoSum(ratio, -c), unitAndProduct};
}

DoubleDouble quickArctangent(const SplitArctangent& parts) {
    const DoubleDouble t = parts.numerator / parts.denominator;
    const double square = t.high * t.high;
    const double tail =
        t.high * square * (-1.0 / 3.0 + square * (1.0 / 5.0 + square * (square * (1.0 / 9.0) - 1.0 / 7.0)));
    return parts.base.upperPart() + t + DoubleDouble{tail, 0.0};
}

// The first term left out is t^24 / 25, below 2^-172 of t; the operations give less than 2^-148.
TripleDouble accurateArctangent(const SplitArctangent& parts) {
    const TripleDouble t = toTriple(parts.numerator) / toTriple(parts.denominator);
    const TripleDouble minusSquare = -(t * t);
    TripleDouble sum = inverseOddNumbers[11];
    for (std::size_t n = 11; n-- > 0;) {
        sum = sum * minusSquare + inverseOddNumbers[n];
    }
    return parts.base + sum * t;
}

} // namespace

double exactExp(double exponent) {
    if (exponent != exponent) {
        return notANumber;
    }
    if (exponent > 710.0) {
        return infinity;
    }
    if (exponent < -746.0) {
        return 0.0;
    }
    if (exponent <= 0x1p-54 && exponent >= -0x1p-54) {
        return 1.0; // half of the gap beside 1, where ties are even
    }
    const SplitExponent parts = split(exponent);
    const TripleDouble power = powersOf2[parts.k];
    if (parts.whole > -1022) { // certainly not subnormal
        const DoubleDouble r = subtractMultiple(exponent, parts.count, logarithmOf2By64);
        const DoubleDouble value = quickExponential(r, power.upperPart());
        if (const std::optional<double> result = roundIfCertain(value, quickExponentialError)) {
            return scaled(*result, parts.whole);
        }
    }
    const TripleDouble r = subtractMultipleAccurately(exponent, parts.count, logarithmOf2By64);
    return roundScaled(accurateExponential(r, power), parts.whole);
}

double exactAtan(double ratio) {
    if (ratio != ratio) {
        return notANumber;
    }
    const bool negative = ratio < 0.0;
    const double size = negative ? -ratio : ratio;
    if (size <= 0x1p-27) {
        return ratio; // x^3 / 3 is less than half of the smaller gap beside x
    }
    if (size >= 0x1p60) {
        return negative ? -halfPi.high : halfPi.high; // 1 / x is too little to reach the next double
    }
    const SplitArctangent parts = splitArctangent(size);
    const std::optional<double> certain = roundIfCertain(quickArctangent(parts), quickArctangentError);
    const double result = certain ? *certain : roundToDouble(accurateArctangent(parts));
    return negative ? -result : result;
}

} // namespace dunkman
