#include "exact/exact_math.h"

#include "exact/double_double.h"
#include "exact/triple_double.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <ios>
#include <limits>
#include <string>

namespace dunkman {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

double tanOfFloat(double radians) { return static_cast<double>(exactTan(static_cast<float>(radians))); }

using Function = double (*)(double);

Function functionNamed(const std::string& name) {
    return name == "sin"    ? exactSin
           : name == "cos"  ? exactCos
           : name == "exp"  ? exactExp
           : name == "atan" ? exactAtan
           : name == "tan"  ? tanOfFloat
                            : nullptr;
}

std::uint64_t bitsOf(double value) { return std::bit_cast<std::uint64_t>(value); }

// Arguments from whole-number arithmetic alone: bits, spread over the exponents from -30 to 33 by every other
// one.
std::uint64_t checksum(Function function) {
    std::uint64_t sum = 14695981039346656037u;
    std::uint64_t state = 1;
    for (int count = 0; count < 200'000; ++count) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        std::uint64_t bits = state ^ (state >> 29);
        if (count % 4 != 0) {
            bits = (bits & 0x800FFFFFFFFFFFFFu) | ((993 + (bits >> 54) % 64) << 52);
        }
        double argument = std::bit_cast<double>(bits);
        if (function == tanOfFloat && !(std::fabs(argument) < 3.0e38)) {
            argument = 1.0;
        }
        sum = (sum ^ bitsOf(function(argument))) * 1099511628211u;
    }
    return sum;
}

TEST(ExactMath, KeepsTheSignOfZero) {
    EXPECT_EQ(bitsOf(exactSin(0.0)), bitsOf(0.0));
    EXPECT_EQ(bitsOf(exactSin(-0.0)), bitsOf(-0.0));
    EXPECT_EQ(bitsOf(exactAtan(0.0)), bitsOf(0.0));
    EXPECT_EQ(bitsOf(exactAtan(-0.0)), bitsOf(-0.0));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(exactTan(0.0f)), 0u);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(exactTan(-0.0f)), 0x80000000u);
    EXPECT_EQ(exactCos(-0.0), 1.0);
    EXPECT_EQ(exactExp(-0.0), 1.0);
}

TEST(ExactMath, AnglesThatAreNotFiniteGiveTheSameNaN) {
    for (const double angle : {infinity, -infinity, notANumber, -notANumber}) {
        EXPECT_EQ(bitsOf(exactSin(angle)), bitsOf(notANumber));
        EXPECT_EQ(bitsOf(exactCos(angle)), bitsOf(notANumber));
        EXPECT_EQ(std::bit_cast<std::uint32_t>(exactTan(static_cast<float>(angle))),
                  std::bit_cast<std::uint32_t>(std::numeric_limits<float>::quiet_NaN()));
    }
    EXPECT_EQ(bitsOf(exactExp(-notANumber)), bitsOf(notANumber));
    EXPECT_EQ(bitsOf(exactAtan(-notANumber)), bitsOf(notANumber));
}

TEST(ExactMath, ExponentialRunsFromNothingToInfinity) {
    EXPECT_EQ(exactExp(infinity), infinity);
    EXPECT_EQ(bitsOf(exactExp(-infinity)), bitsOf(0.0));
    EXPECT_EQ(exactExp(0x1.62e42fefa39efp9), 0x1.fffffffffff2ap1023); // the last finite one
    EXPECT_EQ(exactExp(0x1.62e42fefa39fp9), infinity);
    EXPECT_EQ(exactExp(-0x1.74910d52d3051p9), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(exactExp(-0x1.74910d52d3052p9), 0.0);
    EXPECT_EQ(exactExp(1.0), 2.718281828459045);
}

TEST(ExactMath, ArctangentEndsAtHalfPi) {
    EXPECT_EQ(exactAtan(infinity), 1.5707963267948966);
    EXPECT_EQ(exactAtan(-infinity), -1.5707963267948966);
    EXPECT_EQ(exactAtan(std::numeric_limits<double>::max()), 1.5707963267948966);
    EXPECT_EQ(exactAtan(1.0), 0.7853981633974483);
}

TEST(ExactMath, TinyArgumentsComeBackUnchanged) {
    for (const double tiny : {std::numeric_limits<double>::denorm_min(), 0x1p-1022, -0x1.fp-1040, 1e-300}) {
        EXPECT_EQ(exactSin(tiny), tiny);
        EXPECT_EQ(exactAtan(tiny), tiny);
        EXPECT_EQ(exactCos(tiny), 1.0);
        EXPECT_EQ(exactExp(tiny), 1.0);
    }
    EXPECT_EQ(exactTan(std::numeric_limits<float>::denorm_min()), std::numeric_limits<float>::denorm_min());
}

// Here the distance to the nearest 1 / 64 needs 54 bits.
TEST(ExactMath, TheDoubleBelow128thIsRightToTheLastBit) {
    EXPECT_EQ(exactSin(0x1.fffffffffffffp-8), 0x1.fffeaaaaeeeeep-8);
    EXPECT_EQ(exactAtan(0x1.fffffffffffffp-8), 0x1.fffd555bbba96p-8);
}

TEST(ExactMath, AgreesWithTheReferenceTable) {
    std::ifstream file("tests/exact/exact_math_reference.txt");
    std::string name;
    std::uint64_t argument = 0;
    std::uint64_t expected = 0;
    int lines = 0;
    while (file >> name >> std::hex >> argument >> expected) {
        const Function function = functionNamed(name);
        ASSERT_NE(function, nullptr) << name;
        EXPECT_EQ(bitsOf(function(std::bit_cast<double>(argument))), expected)
            << name << " of the double with the bits " << std::hex << argument;
        ++lines;
    }
    EXPECT_TRUE(file.eof());
    EXPECT_GT(lines, 2000);
}

// One number for 200,000 results: equal on every compiler, at every optimisation level, on every system.
TEST(ExactMath, GivesTheSameBitsOnEveryMachine) {
    EXPECT_EQ(checksum(exactSin), 1922574720984058768u);
    EXPECT_EQ(checksum(exactCos), 5667308716873985541u);
    EXPECT_EQ(checksum(exactExp), 10533686308546609898u);
    EXPECT_EQ(checksum(exactAtan), 12280798170581393526u);
    EXPECT_EQ(checksum(tanOfFloat), 10971110084500360229u);
}

TEST(DoubleDouble, SumsAndProductsKeepTheirRoundingError) {
    const DoubleDouble sum = twoSum(1.0, 0x1p-80);
    EXPECT_EQ(sum.high, 1.0);
    EXPECT_EQ(sum.low, 0x1p-80);
    const DoubleDouble product = twoProduct(1.0 + 0x1p-52, 1.0 - 0x1p-52);
    EXPECT_EQ(product.high, 1.0);
    EXPECT_EQ(product.low, -0x1p-104);
}

TEST(TripleDouble, ATieIsDecidedByWhatFollowsIt) {
    EXPECT_EQ(roundToDouble({1.0, 0x1p-53, 0.0}), 1.0);
    EXPECT_EQ(roundToDouble({1.0, 0x1p-53, 0x1p-120}), 1.0 + 0x1p-52);
    EXPECT_EQ(roundToDouble({1.0, 0x1p-53, -0x1p-120}), 1.0);
    EXPECT_EQ(roundToDouble({1.0 + 0x1p-52, 0x1p-53, 0.0}), 1.0 + 0x1p-51);
    EXPECT_EQ(roundToDouble({1.0 + 0x1p-52, 0x1p-53, -0x1p-120}), 1.0 + 0x1p-52);
    EXPECT_EQ(roundToDouble({-1.0, -0x1p-53, -0x1p-120}), -1.0 - 0x1p-52);
    EXPECT_EQ(roundToFloat({1.0 + 0x1p-24, 0.0, 0.0}), 1.0f);
    EXPECT_EQ(roundToFloat({1.0 + 0x1p-24, 0x1p-90, 0.0}), 1.0f + 0x1p-23f);
    EXPECT_EQ(roundToFloat({1.0 + 0x1.8p-23, -0x1p-90, 0.0}), 1.0f + 0x1p-23f);
}

TEST(TripleDouble, ThirdTimesThreeIsOne) {
    const TripleDouble third = TripleDouble{1.0} / TripleDouble{3.0};
    const TripleDouble rest = third * TripleDouble{3.0} - TripleDouble{1.0};
    EXPECT_NE(third.low, 0.0);
    EXPECT_LT(std::fabs(rest.high), 0x1p-150);
}

} // namespace
} // namespace dunkman
