#include "json5/canonical.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace dunkman {
namespace {

TEST(HexFloat, HasTheFewestDigits) {
    EXPECT_EQ(hexFloat(3.0), "0x1.8p+1");
    EXPECT_EQ(hexFloat(1.0), "0x1p+0");
    EXPECT_EQ(hexFloat(-0.5), "-0x1p-1");
    EXPECT_EQ(hexFloat(0.1), "0x1.999999999999ap-4");
    EXPECT_EQ(hexFloat(1.0 / 60.0), "0x1.1111111111111p-6");
    EXPECT_EQ(hexFloat(1.00390625), "0x1.01p+0");
}

TEST(HexFloat, ZeroKeepsItsSign) {
    EXPECT_EQ(hexFloat(0.0), "0x0p+0");
    EXPECT_EQ(hexFloat(-0.0), "-0x0p+0");
}

TEST(HexFloat, ReachesBothEnds) {
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(hexFloat(Limits::max()), "0x1.fffffffffffffp+1023");
    EXPECT_EQ(hexFloat(-Limits::max()), "-0x1.fffffffffffffp+1023");
    EXPECT_EQ(hexFloat(Limits::min()), "0x1p-1022");
    EXPECT_EQ(hexFloat(1e100), "0x1.249ad2594c37dp+332");
    EXPECT_EQ(hexFloat(0x1p-10), "0x1p-10");
    EXPECT_EQ(hexFloat(0x1p-100), "0x1p-100");
    EXPECT_EQ(hexFloat(0x1p-1000), "0x1p-1000");
}

TEST(HexFloat, SubnormalNumbersLeadWithZero) {
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(hexFloat(Limits::denorm_min()), "0x0.0000000000001p-1022");
    EXPECT_EQ(hexFloat(-Limits::min() / 2), "-0x0.8p-1022");
    EXPECT_EQ(hexFloat(Limits::min() - Limits::denorm_min()), "0x0.fffffffffffffp-1022");
}

TEST(HexFloat, NamesInfinitiesAndNan) {
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(hexFloat(Limits::infinity()), "inf");
    EXPECT_EQ(hexFloat(-Limits::infinity()), "-inf");
    EXPECT_EQ(hexFloat(Limits::quiet_NaN()), "nan");
    EXPECT_EQ(hexFloat(-Limits::quiet_NaN()), "nan");
}

TEST(HexFloat, ReadsBackAsTheSameNumber) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 200000; ++round) {
        const auto bits = random();
        double number = 0.0;
        static_assert(sizeof number == sizeof bits);
        std::memcpy(&number, &bits, sizeof number);
        if (std::isnan(number)) {
            continue;
        }
        const std::string text = hexFloat(number);
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), number) << text;
    }
}

TEST(HexFloat, AppendsToWhatIsThere) {
    std::string text = "x=";
    appendHexFloat(text, -1.5);
    EXPECT_EQ(text, "x=-0x1.8p+0");
}

TEST(CanonicalString, EscapesQuotesBackslashesAndUnprintableBytes) {
    EXPECT_EQ(canonicalString("plain ~ text"), R"("plain ~ text")");
    EXPECT_EQ(canonicalString("a\"b\\c"), R"("a\"b\\c")");
    EXPECT_EQ(canonicalString(std::string("\0\n\x1f\x20\x7e\x7f\x80\xff", 8)),
              R"("\x00\x0a\x1f ~\x7f\x80\xff")");
    EXPECT_EQ(canonicalString(""), R"("")");
}

TEST(CanonicalText, SortsKeysByUnsignedBytes) {
    JsonValue value = JsonValue::makeObject();
    for (const char* key : {"\xff", "b", "B", "a", "ab", "", "~"}) {
        value.member(key) = JsonValue::makeInteger(1);
    }
    EXPECT_EQ(canonicalText(value), R"({"":1,"B":1,"a":1,"ab":1,"b":1,"~":1,"\xff":1})");
}

TEST(CanonicalText, PrintsEveryKind) {
    JsonValue value = JsonValue::makeArray();
    value.append();
    value.append() = JsonValue::makeBool(true);
    value.append() = JsonValue::makeBool(false);
    value.append() = JsonValue::makeInteger(-5);
    value.append() = JsonValue::makeFloat(-5.0);
    value.append() = JsonValue::makeString("s\n");
    value.append() = JsonValue::makeArray();
    value.append() = JsonValue::makeObject();
    EXPECT_EQ(canonicalText(value), R"([null,true,false,-5,-0x1.4p+2,"s\x0a",[],{}])");
}

} // namespace
} // namespace dunkman
