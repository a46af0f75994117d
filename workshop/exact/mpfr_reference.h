#pragma once

#include <cstdint>
#include <vector>

// What the exact functions are held against: MPFR, an arbitrary-precision library that rounds correctly. Only
// for programs built for this machine.
namespace dunkman::exact {

// One exact function. The tangent takes and returns floats, here widened to doubles, which changes no value.
enum class Function { Sin, Cos, Exp, Atan, Tan };

struct NamedFunction {
    Function function;
    const char* name;
    double (*compute)(double); // ours
};

const std::vector<NamedFunction>& allFunctions();

// The correctly rounded result. argument must be a float for Tan.
double reference(Function function, double argument);

// An argument whose result lies close to the middle between nearResult and the next value away from zero,
// where rounding is hardest; NaN where there is none.
double hardArgument(Function function, double nearResult);

// How far the exact result lies from the middle between two values, in units of the last place: 0 to 1/2.
// Only for normal results.
double distanceFromMiddle(Function function, double argument);

// Whole numbers evenly spread over 64 bits, the same on every machine (splitmix64).
class RandomBits {
public:
    explicit RandomBits(std::uint64_t seed) : state(seed) {}
    std::uint64_t next();
    double below1();                                 // from 0 to 1
    double scaled(int leastExponent, int exponents); // either sign, any size from 2^least on
private:
    std::uint64_t state;
};

// Arguments as the game uses them and far beyond, in turn from several families. Floats for Tan.
double randomArgument(Function function, RandomBits& random);

// Arguments that are hard to round, from several families.
double randomHardArgument(Function function, RandomBits& random);

} // namespace dunkman::exact
