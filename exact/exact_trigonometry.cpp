#include "exact/argument_reduction.h"
#include "exact/exact_math.h"
#include "exact/exact_math_tables.h"
#include "exact/rounding_phase.h"

#include <cstddef>
#include <limits>

// Sine, cosine and tangent. The angle is reduced to at most pi / 4, and that to a multiple k / 64 (k up to
// 50) and a distance d of at most 2^-7, so that short series and a table do:
//     sin(k / 64 + d) = sin(k / 64) cos(d) + cos(k / 64) sin(d), and likewise for the cosine.
namespace dunkman {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

bool isFinite(double value) { return value > -infinity && value < infinity; } // false for NaN as well

std::size_t nearestSixtyFourth(double size) { return static_cast<std::size_t>(size * 64.0 + 0.5); }

// What rounding leaves of the results of quickSine and quickCosine, relative to them. With u = 2^-53 and |d|
// <= 2^-7: the cosine's tail is at most 2^-15 and off by 4.1 u of that with its factor, the sine's at most d
// / 2^16.6 and off by 6 u; the additions to the low word give 2 u of 2^-15 more. The cut of the series counts
// for under 2^-74. The worst case is the sine at k = 1, which can be half of the table's value: 2^-64 in all.
constexpr double quickError = 0x1p-63;

// The parts of a sine or cosine that are common to the two functions below; d exceeds 2^-7 by rounding at
// most.
struct QuickParts {
    const SineAndCosine& entry;
    DoubleDouble distance;
    double sineTail;   // sin d - d
    double cosineTail; // cos d - 1
};

QuickParts quickParts(DoubleDouble angle) {
    const std::size_t k = nearestSixtyFourth(angle.high);
    // The difference can need one bit more than a double has: just below 2^-7, where k is 1 already.
    const DoubleDouble difference = twoSum(angle.high, static_cast<double>(k) / -64.0);
    const DoubleDouble d = twoSum(difference.high, difference.low + angle.low);
    const double square = d.high * d.high;
    const double sineTail = d.high * square * (-1.0 / 6.0 + square * (1.0 / 120.0 - square * (1.0 / 5040.0)));
    const double cosineTail =
        square * (-0.5 + square * (1.0 / 24.0 + square * (square * (1.0 / 40320.0) - 1.0 / 720.0))) -
        d.high * d.low;
    return {sinesAndCosines[k], d, sineTail, cosineTail};
}

// For 0 <= angle <= pi / 4 or just over.
DoubleDouble quickSine(DoubleDouble angle) {
    const QuickParts parts = quickParts(angle);
    const double tail = parts.entry.sine.high * parts.cosineTail + parts.entry.cosine.high * parts.sineTail;
    return parts.entry.sine.upperPart() + parts.entry.cosine.upperPart() * parts.distance +
           DoubleDouble{tail, 0.0};
}

DoubleDouble quickCosine(DoubleDouble angle) {
    const QuickParts parts = quickParts(angle);
    const double tail = parts.entry.cosine.high * parts.cosineTail - parts.entry.sine.high * parts.sineTail;
    return parts.entry.cosine.upperPart() + -(parts.entry.sine.upperPart() * parts.distance) +
           DoubleDouble{tail, 0.0};
}

struct AccurateSineAndCosine {
    TripleDouble sine;
    TripleDouble cosine;
};

// The first term left out is d^18 / 18!, below 2^-178; every operation adds less than 2^-152, the steps of
// the series damped by d^2: below 2^-145 in all, relative to each result.
AccurateSineAndCosine accurateSineAndCosine(TripleDouble angle) {
    const std::size_t k = nearestSixtyFourth(angle.high);
    const TripleDouble d = angle - TripleDouble{static_cast<double>(k) / 64.0};
    const TripleDouble minusSquare = -(d * d);
    TripleDouble sine = inverseFactorials[17];
    TripleDouble cosine = inverseFactorials[16];
    for (std::size_t n = 16; n >= 2; n -= 2) {
        sine = sine * minusSquare + inverseFactorials[n - 1];
        cosine = cosine * minusSquare + inverseFactorials[n - 2];
    }
    sine = sine * d;
    const SineAndCosine& entry = sinesAndCosines[k];
    return {entry.sine * cosine + entry.cosine * sine, entry.cosine * cosine - entry.sine * sine};
}

// A turned angle with the sign of its rest taken off: what decides table entry and sign of a result.
template <typename Number> struct FoldedAngle {
    Number rest;
    bool restNegative;
    bool oddTurns;  // sine and cosine change places
    bool halfTurns; // and then change sign

    explicit FoldedAngle(TurnedAngle<Number> angle, unsigned moreQuarterTurns = 0)
        : rest(angle.rest.high < 0.0 ? -angle.rest : angle.rest), restNegative(angle.rest.high < 0.0),
          oddTurns(((angle.quarterTurns + moreQuarterTurns) & 1u) != 0),
          halfTurns(((angle.quarterTurns + moreQuarterTurns) & 2u) != 0) {}

    bool sineNegative() const { return halfTurns != (restNegative && !oddTurns); }
    bool tangentNegative() const { return oddTurns != restNegative; }
};

// sin(radians + moreQuarterTurns * pi / 2), rounded once. The two phases may count the quarter turns
// differently just beside an odd multiple of pi / 4, so the second begins anew.
double sineAfter(double radians, unsigned moreQuarterTurns) {
    const FoldedAngle angle(reduceAngle(radians), moreQuarterTurns);
    const DoubleDouble size = angle.oddTurns ? quickCosine(angle.rest) : quickSine(angle.rest);
    if (const std::optional<double> result = roundIfCertain(size, quickError)) {
        return angle.sineNegative() ? -*result : *result;
    }
    const FoldedAngle accurate(reduceAngleAccurately(radians), moreQuarterTurns);
    const AccurateSineAndCosine both = accurateSineAndCosine(accurate.rest);
    const double result = roundToDouble(accurate.oddTurns ? both.cosine : both.sine);
    return accurate.sineNegative() ? -result : result;
}

} // namespace

double exactSin(double radians) {
    if (!isFinite(radians)) {
        return notANumber;
    }
    if (radians <= 0x1p-26 && radians >= -0x1p-26) {
        return radians; // x^3 / 6 is less than half of the smaller gap beside x
    }
    return sineAfter(radians, 0);
}

double exactCos(double radians) {
    if (!isFinite(radians)) {
        return notANumber;
    }
    if (radians <= 0x1p-27 && radians >= -0x1p-27) {
        return 1.0; // x^2 / 2 is less than half of the gap below 1
    }
    return sineAfter(radians, 1);
}

// A float is certain as soon as 2^-50 either way makes no difference: the two sizes are off by less than
// 2^-52.9 once they are single doubles, the quotient by less than 2^-51.
float exactTan(float radians) {
    if (!isFinite(static_cast<double>(radians))) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    if (radians <= 0x1p-12f && radians >= -0x1p-12f) {
        return radians; // x^3 / 3 is less than half of the gap above x
    }
    const double wideRadians = static_cast<double>(radians);
    const FoldedAngle angle(reduceAngle(wideRadians));
    const double sine = quickSine(angle.rest).high;
    const double cosine = quickCosine(angle.rest).high;
    const double size = angle.oddTurns ? cosine / sine : sine / cosine;
    const float least = static_cast<float>(size - size * 0x1p-50);
    const float most = static_cast<float>(size + size * 0x1p-50);
    if (least == most) {
        return angle.tangentNegative() ? -least : least;
    }
    const FoldedAngle accurate(reduceAngleAccurately(wideRadians));
    const AccurateSineAndCosine both = accurateSineAndCosine(accurate.rest);
    const float result = roundToFloat(accurate.oddTurns ? both.cosine / both.sine : both.sine / both.cosine);
    return accurate.tangentNegative() ? -result : result;
}

} // namespace dunkman
