// The exact functions against MPFR. DUNKMAN_EXACT_MATH_ARGUMENTS sets how many random arguments each function
// gets, DUNKMAN_EXACT_MATH_SEED where they begin.
#include "exact/argument_reduction.h"
#include "workshop/exact/mpfr_reference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <ios>
#include <limits>
#include <mpfr.h>
#include <string>

namespace dunkman {
namespace {

using exact::NamedFunction;
using exact::RandomBits;

std::uint64_t setting(const char* name, std::uint64_t otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::uint64_t seed() { return setting("DUNKMAN_EXACT_MATH_SEED", 1); }

bool sameBits(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

class EveryExactFunction : public testing::TestWithParam<NamedFunction> {
protected:
    void check(double argument) {
        const double expected = exact::reference(GetParam().function, argument);
        const double result = GetParam().compute(argument);
        if (!sameBits(result, expected)) {
            ADD_FAILURE() << GetParam().name << " of " << std::hexfloat << argument << " is " << result
                          << ", should be " << expected;
        }
    }
};

TEST_P(EveryExactFunction, IsCorrectlyRoundedForRandomArguments) {
    const std::uint64_t arguments = setting("DUNKMAN_EXACT_MATH_ARGUMENTS", 400'000);
    RandomBits random(seed());
    for (std::uint64_t count = 0; count < arguments && !HasFailure(); ++count) {
        check(exact::randomArgument(GetParam().function, random));
    }
}

TEST_P(EveryExactFunction, IsCorrectlyRoundedWhereRoundingIsHard) {
    const std::uint64_t arguments = setting("DUNKMAN_EXACT_MATH_ARGUMENTS", 400'000) / 20;
    RandomBits random(seed());
    for (std::uint64_t count = 0; count < arguments && !HasFailure(); ++count) {
        const double argument = exact::randomHardArgument(GetParam().function, random);
        if (!std::isnan(argument)) {
            check(argument);
            check(-argument);
        }
    }
}

TEST_P(EveryExactFunction, IsCorrectlyRoundedBesideEveryPowerOfTwo) {
    for (int exponent = -1074; exponent < 1024; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        const bool isTan = GetParam().function == exact::Function::Tan;
        if (isTan && (exponent < -149 || exponent > 127)) {
            continue;
        }
        const double below = isTan ? static_cast<double>(std::nextafter(static_cast<float>(power), 0.0f))
                                   : std::nextafter(power, 0.0);
        const double above = isTan ? static_cast<double>(std::nextafter(
                                         static_cast<float>(power), std::numeric_limits<float>::infinity()))
                                   : std::nextafter(power, std::numeric_limits<double>::infinity());
        for (const double argument : {below, power, above}) {
            check(argument);
            check(-argument);
        }
    }
}

// Where one table entry gives way to the next, the distance to the nearest one is greatest.
TEST_P(EveryExactFunction, IsCorrectlyRoundedBesideTheTableBoundaries) {
    const bool isTan = GetParam().function == exact::Function::Tan;
    for (int k = 0; k < 2000; ++k) {
        const double middle = k + 0.5;
        for (const double boundary :
             {middle / 64.0, 64.0 / middle, middle * 0.010830424696249145, middle * 1.5707963267948966}) {
            for (int step = -4; step <= 4; ++step) {
                const double argument =
                    isTan ? static_cast<double>(static_cast<float>(boundary + boundary * (step * 0x1p-24)))
                          : boundary + boundary * (step * 0x1p-53);
                check(argument);
                check(-argument);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ExactMath, EveryExactFunction, testing::ValuesIn(exact::allFunctions()),
                         [](const testing::TestParamInfo<NamedFunction>& tested) {
                             return std::string(tested.param.name);
                         });

// Else the arguments above would not test the second phase at all.
TEST(ExactMathReferenceTable, HardArgumentsAreHardToRound) {
    RandomBits random(seed());
    for (const NamedFunction& named : exact::allFunctions()) {
        double least = 0.5;
        for (int count = 0; count < 2000; ++count) {
            const double argument = exact::randomHardArgument(named.function, random);
            if (!std::isnan(argument) && std::isnormal(named.compute(argument))) {
                least = std::min(least, exact::distanceFromMiddle(named.function, argument));
            }
        }
        EXPECT_LT(least, named.function == exact::Function::Tan ? 0x1p-20 : 0x1p-40) << named.name;
    }
}

// Guards the table itself, which is all that is compared where MPFR is not at hand.
TEST(ExactMathReferenceTable, HoldsTheResultsOfMpfr) {
    std::ifstream file("tests/exact/exact_math_reference.txt");
    std::string name;
    std::uint64_t argument = 0;
    std::uint64_t expected = 0;
    int lines = 0;
    while (file >> name >> std::hex >> argument >> expected) {
        for (const NamedFunction& named : exact::allFunctions()) {
            if (named.name == name) {
                const double result = exact::reference(named.function, std::bit_cast<double>(argument));
                EXPECT_EQ(std::bit_cast<std::uint64_t>(result), expected) << name << " " << argument;
                ++lines;
            }
        }
    }
    EXPECT_GT(lines, 2000);
}

// log2 of the relative error of high + middle + low as what is left of radians without its quarter turns.
double reductionError(double radians, unsigned quarterTurns, TripleDouble rest) {
    mpfr_set_emin(mpfr_get_emin_min());
    mpfr_set_emax(mpfr_get_emax_max());
    constexpr mpfr_prec_t bits = 1600;
    mpfr_t turn, expected, error;
    mpfr_inits2(bits, turn, expected, error, static_cast<mpfr_ptr>(nullptr));
    mpfr_const_pi(turn, MPFR_RNDN);
    mpfr_div_2ui(turn, turn, 1, MPFR_RNDN);
    mpfr_set_d(expected, radians, MPFR_RNDN);
    mpfr_div(error, expected, turn, MPFR_RNDN);
    mpfr_round(error, error); // whole quarter turns
    mpfr_fms(expected, error, turn, expected, MPFR_RNDN);
    mpfr_neg(expected, expected, MPFR_RNDN);
    mpfr_fmod_ui(error, error, 4, MPFR_RNDN);
    const long turns = mpfr_get_si(error, MPFR_RNDN);
    EXPECT_EQ(quarterTurns & 3u, static_cast<unsigned long>(turns) & 3u) << std::hexfloat << radians;
    mpfr_set_d(error, rest.high, MPFR_RNDN);
    mpfr_add_d(error, error, rest.middle, MPFR_RNDN);
    mpfr_add_d(error, error, rest.low, MPFR_RNDN);
    mpfr_sub(error, error, expected, MPFR_RNDN);
    mpfr_div(error, error, expected, MPFR_RNDN);
    const double relative = std::fabs(mpfr_get_d(error, MPFR_RNDN));
    mpfr_clears(turn, expected, error, static_cast<mpfr_ptr>(nullptr));
    return relative;
}

TEST(ArgumentReduction, StaysWithinItsBounds) {
    RandomBits random(seed());
    for (int count = 0; count < 20'000; ++count) {
        double radians = exact::randomArgument(exact::Function::Sin, random);
        if (count == 0) {
            radians = 6381956970095103.0 * 0x1p797; // the double nearest to a multiple of pi / 2
        }
        if (!std::isfinite(radians) || std::fabs(radians) < 0x1p-30) {
            continue;
        }
        const auto accurate = reduceAngleAccurately(radians);
        ASSERT_LT(reductionError(radians, accurate.quarterTurns, accurate.rest), 0x1p-148)
            << std::hexfloat << radians;
        const auto quick = reduceAngle(radians);
        ASSERT_LT(reductionError(radians, quick.quarterTurns, toTriple(quick.rest)), 0x1p-80)
            << std::hexfloat << radians;
    }
}

} // namespace
} // namespace dunkman
