#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace dunkman {
namespace {

using test::readText;
using test::valueOf;

std::string exceptionOf(const std::string& text) {
    try {
        readText(text);
    } catch (const std::out_of_range& exception) {
        return exception.what();
    }
    return "none";
}

TEST(Json5ReaderNumber, DigitsAreAnInteger) {
    EXPECT_EQ(valueOf("0"), "0");
    EXPECT_EQ(valueOf("12"), "12");
    EXPECT_EQ(valueOf("-12"), "-12");
    EXPECT_EQ(valueOf("+5"), "5");
    EXPECT_EQ(valueOf("-0"), "0");
    EXPECT_EQ(valueOf("9223372036854775807"), "9223372036854775807");
    EXPECT_EQ(valueOf("-9223372036854775808"), "-9223372036854775808");
}

TEST(Json5ReaderNumber, PointOrExponentMakesAFloat) {
    EXPECT_EQ(valueOf("0.5"), "0x1p-1");
    EXPECT_EQ(valueOf(".5"), "0x1p-1");
    EXPECT_EQ(valueOf("5."), "0x1.4p+2");
    EXPECT_EQ(valueOf("[5.]"), "[0x1.4p+2]");
    EXPECT_EQ(valueOf("1e5"), "0x1.86ap+16");
    EXPECT_EQ(valueOf("1E+5"), "0x1.86ap+16");
    EXPECT_EQ(valueOf("1.e3"), "0x1.f4p+9");
    EXPECT_EQ(valueOf("-.5e-3"), "-0x1.0624dd2f1a9fcp-11");
    EXPECT_EQ(valueOf("+.25"), "0x1p-2");
    EXPECT_EQ(valueOf("-0.0"), "-0x0p+0");
    EXPECT_EQ(valueOf("-0."), "-0x0p+0");
    EXPECT_EQ(valueOf("1e007"), "0x1.312dp+23");
    EXPECT_EQ(valueOf("1e-0"), "0x1p+0");
}

TEST(Json5ReaderNumber, LeadingZeroEndsTheIntegerPart) {
    const auto zeros = readText("00");
    EXPECT_EQ(zeros.value, "0");
    EXPECT_EQ(zeros.message, "Unexpected '0' after value. Expected end of file.");
    EXPECT_EQ(readText("007").value, "0");
    EXPECT_EQ(readText("007").position.characters, 2u);
    EXPECT_EQ(readText("[07]").message, "Expected ']' instead of '7'.");
    EXPECT_EQ(readText("{a:07}").message, "Expected '}' instead of '7'.");
    EXPECT_EQ(valueOf("0.07"), "0x1.1eb851eb851ecp-4");
    EXPECT_EQ(valueOf("0e1"), "0x0p+0");
}

TEST(Json5ReaderNumber, NaNAndInfinity) {
    EXPECT_EQ(valueOf("NaN"), "nan");
    EXPECT_EQ(valueOf("Infinity"), "inf");
    EXPECT_EQ(valueOf("+Infinity"), "inf");
    EXPECT_EQ(valueOf("-Infinity"), "-inf");
    EXPECT_EQ(valueOf("[NaN,-Infinity]"), "[nan,-inf]");
    for (const char* text : {"-NaN", "+NaN"}) {
        EXPECT_EQ(readText(text).code, Json5Error::Syntax) << text;
        EXPECT_EQ(readText(text).message, "") << text;
    }
}

TEST(Json5ReaderNumber, FailedNaNOrInfinityLeavesTheValueUntouched) {
    EXPECT_EQ(readText("Nan").message, "Expected 'N' instead of 'n'.");
    EXPECT_EQ(readText("Nan").value, "null");
    EXPECT_EQ(readText("-Infinite").message, "Expected 'y' instead of 'e'.");
    EXPECT_EQ(readText("{a:7,a:Infinitx}").value, R"({"a":7})");
}

// Deliberate, and not to be corrected.
TEST(Json5ReaderNumber, HexNumberIsSixteenTimesWhatIsWritten) {
    EXPECT_EQ(valueOf("0x10"), "256");
    EXPECT_EQ(valueOf("0x1F"), "496");
    EXPECT_EQ(valueOf("0X1f"), "496");
    EXPECT_EQ(valueOf("0x0"), "0");
    EXPECT_EQ(valueOf("[0x1,0xA]"), "[16,160]");
}

TEST(Json5ReaderNumber, HexNumberIgnoresTheSign) {
    EXPECT_EQ(valueOf("-0x10"), "256");
    EXPECT_EQ(valueOf("+0x10"), "256");
}

TEST(Json5ReaderNumber, HexNumberDropsBitsAboveSixtyFour) {
    EXPECT_EQ(valueOf("0x123456789abcdef01"), "3771334343958392848"); // 0x3456789abcdef010
    EXPECT_EQ(valueOf("0xfffffffffffffff"), "-16");
}

TEST(Json5ReaderNumber, HexNumberWithoutDigitNamesTheNextCharacter) {
    const auto reading = readText("0xgh");
    EXPECT_EQ(reading.code, Json5Error::Syntax);
    EXPECT_EQ(reading.message, "Unexpected 'h', expected hexadecimal digit.");
    EXPECT_EQ(reading.value, "0");
    EXPECT_EQ(reading.position.characters, 3u);
    EXPECT_EQ(readText("0x").message, std::string("Unexpected '") + '\0' + "', expected hexadecimal digit.");
    EXPECT_EQ(readText("0x ").message, std::string("Unexpected '") + '\0' + "', expected hexadecimal digit.");
    EXPECT_EQ(readText("{a:'s',a:0x}").value, R"({"a":0})");
}

TEST(Json5ReaderNumber, HexSwallowsOnlyHexDigits) {
    EXPECT_EQ(readText("0x1g").message, "Unexpected 'g' after value. Expected end of file.");
    EXPECT_EQ(readText("0x1.5").value, "16");
}

TEST(Json5ReaderNumber, WhatIsNoNumberIsAnErrorWithoutMessage) {
    for (const char* text : {"-",     "+",    ".",   "-.",  "e5", ".e5", "1e", "1e+", "1e-x", "1e5.",
                             "1e5.5", "1e.5", "--1", "+-1", "x",  "]",   "}",  ":",   "tru ", "nul!"}) {
        const auto reading = readText(text);
        EXPECT_EQ(reading.code, Json5Error::Syntax) << text;
        EXPECT_EQ(reading.message, "") << text;
        EXPECT_EQ(reading.value, "null") << text;
    }
}

TEST(Json5ReaderNumber, NumberEndsAtTheFirstForeignCharacter) {
    EXPECT_EQ(readText("1.2.3").value, "0x1.3333333333333p+0");
    EXPECT_EQ(readText("1.2.3").message, "Unexpected '.' after value. Expected end of file.");
    EXPECT_EQ(readText("1-2").message, "Unexpected '-' after value. Expected end of file.");
    EXPECT_EQ(readText("1e5e").message, "Unexpected 'e' after value. Expected end of file.");
}

TEST(Json5ReaderNumber, IntegerBeyondSixtyFourBitsThrows) {
    const std::string text = "stoll argument out of range";
    EXPECT_EQ(exceptionOf("9223372036854775807"), "none");
    EXPECT_EQ(exceptionOf("9223372036854775808"), text);
    EXPECT_EQ(exceptionOf("-9223372036854775808"), "none");
    EXPECT_EQ(exceptionOf("-9223372036854775809"), text);
    EXPECT_EQ(exceptionOf("18446744073709551616"), text);
    EXPECT_EQ(exceptionOf("{a:[99999999999999999999999999]}"), text);
    EXPECT_EQ(exceptionOf(std::string(100000, '9')), text);
}

TEST(Json5ReaderNumber, FloatBeyondTheExtendedRangeThrows) {
    const std::string text = "stold argument out of range";
    EXPECT_EQ(exceptionOf("1e4932"), "none");
    EXPECT_EQ(exceptionOf("1.2e4932"), text);
    EXPECT_EQ(exceptionOf("-1e5000"), text);
    EXPECT_EQ(exceptionOf("1e-4931"), "none");
    EXPECT_EQ(exceptionOf("1e-4932"), text);
    EXPECT_EQ(exceptionOf("-1e-5000"), text);
    EXPECT_EQ(exceptionOf("1e99999999999999999999999999"), text);
    EXPECT_EQ(exceptionOf("0e99999999999999999999999999"), "none");
    EXPECT_EQ(exceptionOf("0.0e-99999999999999999999999999"), "none");
}

TEST(Json5ReaderNumber, FloatBetweenTheRangesBecomesInfinityOrZero) {
    EXPECT_EQ(valueOf("1e400"), "inf");
    EXPECT_EQ(valueOf("-1e400"), "-inf");
    EXPECT_EQ(valueOf("1e-400"), "0x0p+0");
    EXPECT_EQ(valueOf("-1e-400"), "-0x0p+0");
}

} // namespace
} // namespace dunkman
