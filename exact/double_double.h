#pragma once

#include <cfloat>

// Error-free arithmetic on doubles: a sum or product together with its own rounding error. All of it holds
// for IEEE doubles rounded to nearest, without contraction, as long as nothing overflows or comes near the
// subnormals.
namespace dunkman {

// The 80-bit registers of the x87 round every result twice, or not at all: no setting makes them give what all
// others give. 32-bit x86 builds take SSE2 (-msse2 -mfpmath=sse).
static_assert(FLT_EVAL_METHOD == 0, "doubles must be calculated as doubles");

// The unevaluated sum of two doubles, the second at most half a unit in the last place of the first: 106
// bits.
struct DoubleDouble {
    double high = 0.0;
    double low = 0.0;
};

// a + b exactly (Knuth).
constexpr DoubleDouble twoSum(double a, double b) {
    const double sum = a + b;
    const double partOfB = sum - a;
    const double partOfA = sum - partOfB;
    return {sum, (a - partOfA) + (b - partOfB)};
}

// a + b exactly, for |a| >= |b| (Dekker).
constexpr DoubleDouble fastTwoSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

// a cut into two halves of 26 bits (Veltkamp), whose products with other halves are exact. |a| below 2^996.
constexpr DoubleDouble splitInHalves(double a) {
    const double scaled = 134217729.0 * a; // 2^27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

// a * b exactly (Dekker).
constexpr DoubleDouble twoProduct(double a, double b) {
    const DoubleDouble halvesOfA = splitInHalves(a);
    const DoubleDouble halvesOfB = splitInHalves(b);
    const double product = a * b;
    const double error = ((halvesOfA.high * halvesOfB.high - product) + halvesOfA.high * halvesOfB.low +
                          halvesOfA.low * halvesOfB.high) +
                         halvesOfA.low * halvesOfB.low;
    return {product, error};
}

constexpr DoubleDouble operator-(DoubleDouble a) { return {-a.high, -a.low}; }

// Off by less than 2^-102 of the product.
constexpr DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble product = twoProduct(a.high, b.high);
    return fastTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

// Off by less than 2^-102 of |a| + |b|.
constexpr DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
    const DoubleDouble sum = twoSum(a.high, b.high);
    return fastTwoSum(sum.high, sum.low + (a.low + b.low));
}

// Off by less than 2^-100 of the quotient: the remainder of the first quotient is exact to the bits that
// matter.
constexpr DoubleDouble operator/(DoubleDouble a, DoubleDouble b) {
    const double quotient = a.high / b.high;
    const DoubleDouble product = twoProduct(quotient, b.high);
    const double remainder = ((a.high - product.high) - product.low) + (a.low - quotient * b.low);
    return fastTwoSum(quotient, remainder / b.high);
}

} // namespace dunkman
