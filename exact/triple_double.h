#pragma once

#include "exact/double_double.h"

// Arithmetic on about 159 bits, for the few results that 106 bits cannot settle. Written to be plain, not
// fast.
namespace dunkman {

// The unevaluated sum of three doubles, each at most about half a unit in the last place of the one before.
struct TripleDouble {
    double high = 0.0;
    double middle = 0.0;
    double low = 0.0;

    // The first two parts; what is missing is below 2^-105 of the whole.
    constexpr DoubleDouble upperPart() const { return {high, middle}; }
};

constexpr TripleDouble toTriple(DoubleDouble a) { return {a.high, a.low, 0.0}; }

constexpr TripleDouble operator-(TripleDouble a) { return {-a.high, -a.middle, -a.low}; }

// Off by less than 2^-152 of |a| + |b|.
TripleDouble operator+(TripleDouble a, TripleDouble b);
TripleDouble operator-(TripleDouble a, TripleDouble b);

// Off by less than 2^-152 of the product.
TripleDouble operator*(TripleDouble a, TripleDouble b);

// Off by less than 2^-150 of the quotient.
TripleDouble operator/(TripleDouble a, TripleDouble b);

// The double nearest to a, ties to even.
double roundToDouble(TripleDouble a);

// The float nearest to a, ties to even.
float roundToFloat(TripleDouble a);

} // namespace dunkman
