#include "json5/decimal.h"

#include "json5/canonical.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

namespace dunkman {
namespace {

// Digits, then optionally ".digits" and "e[-]digits".
double floatOf(const std::string& text) {
    DecimalLiteral literal;
    std::string_view rest = text;
    if (!rest.empty() && rest.front() == '-') {
        literal.negative = true;
        rest.remove_prefix(1);
    }
    const std::size_t e = rest.find('e');
    if (e != std::string_view::npos) {
        literal.exponentDigits = rest.substr(e + 1);
        if (literal.exponentDigits.front() == '-') {
            literal.exponentNegative = true;
            literal.exponentDigits.remove_prefix(1);
        }
        rest = rest.substr(0, e);
    }
    const std::size_t point = rest.find('.');
    literal.hasPoint = point != std::string_view::npos;
    literal.integerDigits = rest.substr(0, point);
    if (literal.hasPoint) {
        literal.fractionDigits = rest.substr(point + 1);
    }
    return floatFromLiteral(literal);
}

std::string textOf(const std::string& literal) {
    try {
        return hexFloat(floatOf(literal));
    } catch (const std::out_of_range&) {
        return "out of range";
    }
}

TEST(FloatFromLiteral, ConvertsPlainDecimals) {
    EXPECT_EQ(floatOf("0.1"), 0.1);
    EXPECT_EQ(floatOf("16.6666667"), 16.6666667);
    EXPECT_EQ(floatOf("3.14159265359"), 3.14159265359);
    EXPECT_EQ(floatOf("-12345.678e-9"), -12345.678e-9);
    EXPECT_EQ(floatOf("000.500"), 0.5);
    EXPECT_EQ(floatOf("100000000000000000000000.0"), 1e23);
}

// 0.002877 lies so near the middle of two doubles that rounding to 64 bits first moves it onto the middle; the
// second rounding then goes to the even neighbour, which is not the nearest.
TEST(FloatFromLiteral, RoundsTwiceLikeTheExtendedType) {
    EXPECT_NE(floatOf("0.002877"), 0.002877);
    EXPECT_EQ(textOf("0.002877"), "0x1.791819d2391d6p-9"); // the nearest ends in 5
    EXPECT_NE(floatOf("0.0010549"), 0.0010549);
}

TEST(FloatFromLiteral, ReachesTheEndsOfTheDoublesRange) {
    EXPECT_EQ(floatOf("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(textOf("1.7976931348623159e308"), "inf");
    EXPECT_EQ(textOf("2.2250738585072014e-308"), "0x1p-1022");
    EXPECT_EQ(textOf("4.9406564584124654e-324"), "0x0.0000000000001p-1022");
    EXPECT_EQ(textOf("2.5e-324"), "0x0.0000000000001p-1022");
    EXPECT_EQ(textOf("2.4e-324"), "0x0p+0");
    EXPECT_EQ(textOf("-2.4e-324"), "-0x0p+0");
}

TEST(FloatFromLiteral, KnowsTheEndsOfTheExtendedRange) {
    EXPECT_EQ(textOf("1.18973149535723176502e4932"), "inf");
    EXPECT_EQ(textOf("1.18973149535723176509e4932"), "out of range");
    EXPECT_EQ(textOf("3.3621031431120935063e-4932"), "0x0p+0");
    EXPECT_EQ(textOf("3.3621031431120935061e-4932"), "out of range");
    EXPECT_EQ(textOf("1e-4940"), "out of range");
}

TEST(FloatFromLiteral, LongLiteralsCountEveryDigit) {
    const std::string zeros(2000, '0');
    EXPECT_EQ(floatOf("1" + zeros + "e-2000"), 1.0);
    EXPECT_EQ(floatOf("0." + zeros + "1e2001"), 1.0);
    // 1 + 2^-64 is the middle between 1 and the next extended number, 1 + 2^-53 the middle between two doubles.
    const std::string middle = "1.00000000000000011102230246251565404236316680908203125";
    EXPECT_EQ(textOf(middle), "0x1p+0");
    EXPECT_EQ(textOf(middle + zeros + "1"), "0x1p+0"); // lost in the first rounding
    EXPECT_EQ(textOf("1.0000000000000001111"), "0x1.0000000000001p+0");
}

// 2^64 + 2049 and 2^64 + 6143 lie in the middle of two extended numbers; what the first rounding makes of them is in
// the middle of two doubles.
TEST(FloatFromLiteral, RoundsAMiddleToTheEvenNeighbourBothTimes) {
    EXPECT_EQ(textOf("18446744073709553665.0"), "0x1p+64");
    EXPECT_EQ(textOf("18446744073709557759.0"), "0x1.0000000000002p+64");
}

std::string randomLiteral(std::mt19937_64& random) {
    std::string text = random() % 4 == 0 ? "-" : "";
    const auto digits = [&](std::size_t most) {
        const std::size_t count = random() % (most + 1);
        for (std::size_t index = 0; index < count; ++index) {
            text += static_cast<char>('0' + random() % 10);
        }
    };
    const std::size_t most = random() % 8 == 0 ? 60 : 12;
    digits(most);
    text += static_cast<char>('0' + random() % 10);
    text += '.';
    digits(most);
    switch (random() % 4) {
    case 0:
        text += "e" + std::to_string(static_cast<int>(random() % 60) - 30);
        break;
    case 1:
        text += "e" + std::to_string(static_cast<int>(random() % 700) - 350);
        break;
    case 2:
        text += "e" + std::to_string(static_cast<int>(random() % 10000) - 5000);
        break;
    default:
        break;
    }
    return text;
}

// Where the library's long double is the extended type, its conversion must come to the same.
TEST(FloatFromLiteral, AgreesWithTheLibrarysExtendedConversion) {
    if (std::numeric_limits<long double>::digits != 64) {
        GTEST_SKIP() << "long double has another size here";
    }
    std::mt19937_64 random(20240611);
    for (int round = 0; round < 300000; ++round) {
        const std::string literal = randomLiteral(random);
        errno = 0;
        const long double extended = std::strtold(literal.c_str(), nullptr);
        const std::string expected =
            errno == ERANGE ? "out of range" : hexFloat(static_cast<double>(extended));
        ASSERT_EQ(textOf(literal), expected) << literal;
    }
}

TEST(FloatFromLiteral, AgreesWithTheLibraryOnShortFractions) {
    if (std::numeric_limits<long double>::digits != 64) {
        GTEST_SKIP() << "long double has another size here";
    }
    for (int number = 1000000; number < 2000000; ++number) {
        const std::string literal = "0." + std::to_string(number).substr(1);
        const auto expected = static_cast<double>(std::strtold(literal.c_str(), nullptr));
        ASSERT_EQ(floatOf(literal), expected) << literal;
    }
}

TEST(IntegerFromLiteral, HoldsSixtyFourBits) {
    DecimalLiteral literal;
    literal.integerDigits = "9223372036854775807";
    EXPECT_EQ(integerFromLiteral(literal), std::numeric_limits<std::int64_t>::max());
    literal.integerDigits = "9223372036854775808";
    EXPECT_THROW(integerFromLiteral(literal), std::out_of_range);
    literal.negative = true;
    EXPECT_EQ(integerFromLiteral(literal), std::numeric_limits<std::int64_t>::min());
}

} // namespace
} // namespace dunkman
