#include "base/arithmetic.h"

#include <limits>

namespace dunkman {

namespace {

// Read anew each time, so that the processor calculates and not the compiler.
volatile double one = 1.0;
volatile double three = 3.0;
volatile double ten = 10.0;
volatile double half = 0.5;
volatile double large = 0x1p100;
volatile double smallestNormal = std::numeric_limits<double>::min();
volatile double smallest = std::numeric_limits<double>::denorm_min();

// The double nearest to a third lies below it, the one nearest to a tenth above: every other way of rounding
// gets one of the two wrong.
bool roundsToNearest() {
    const volatile double third = one / three;
    const volatile double tenth = one / ten;
    return third == 1.0 / 3.0 && tenth == 1.0 / 10.0;
}

bool keepsSmallResults() {
    const volatile double result = smallestNormal * half;
    return result != 0.0;
}

bool keepsSmallOperands() {
    const volatile double result = smallest * large;
    return result != 0.0;
}

} // namespace

bool hasDefaultArithmetic() { return roundsToNearest() && keepsSmallResults() && keepsSmallOperands(); }

} // namespace dunkman
