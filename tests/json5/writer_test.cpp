#include "json5/writer.h"

#include "json5/reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace dunkman {
namespace {

JsonValue parse(std::string_view text) {
    JsonValue value;
    Json5Report report;
    parseDocument(text, report, value);
    return value;
}

std::string written(const JsonValue& value, std::string_view unit = "  ", int depth = 0) {
    std::string text;
    writeJson5(value, text, unit, depth);
    return text;
}

std::string rewritten(std::string_view text, std::string_view unit = "  ", int depth = 0) {
    return written(parse(text), unit, depth);
}

std::string writtenFloat(double number) { return written(JsonValue::makeFloat(number)); }

TEST(Json5Writer, PrintsScalars) {
    EXPECT_EQ(rewritten("null"), "null");
    EXPECT_EQ(rewritten("true"), "true");
    EXPECT_EQ(rewritten("false"), "false");
    EXPECT_EQ(rewritten("3"), "3");
    EXPECT_EQ(rewritten("-9223372036854775808"), "-9223372036854775808");
}

TEST(Json5Writer, FloatAlwaysHasAPoint) {
    EXPECT_EQ(writtenFloat(3.0), "3.0");
    EXPECT_EQ(writtenFloat(5.0), "5.0");
    EXPECT_EQ(writtenFloat(0.25), "0.25");
    EXPECT_EQ(writtenFloat(0.0), "0.0");
    EXPECT_EQ(writtenFloat(-0.0), "-0.0");
    EXPECT_EQ(writtenFloat(-2.5), "-2.5");
}

TEST(Json5Writer, FloatHasSixSignificantDigits) {
    EXPECT_EQ(writtenFloat(0.1), "0.1");
    EXPECT_EQ(writtenFloat(1.0 / 3.0), "0.333333");
    EXPECT_EQ(writtenFloat(123456.0), "123456.0");
    EXPECT_EQ(writtenFloat(123456.7), "123457.0");
    EXPECT_EQ(writtenFloat(0.0001), "0.0001");
    EXPECT_EQ(writtenFloat(999999.5), "1e+06.0");
}

// Kept although it does not read back: the point is asked of the whole text.
TEST(Json5Writer, ExponentFormWithoutPointGetsOne) {
    EXPECT_EQ(writtenFloat(1234567.0), "1.23457e+06");
    EXPECT_EQ(writtenFloat(1000000.0), "1e+06.0");
    EXPECT_EQ(writtenFloat(0.00001), "1e-05.0");
    EXPECT_EQ(writtenFloat(1.5e300), "1.5e+300");
    EXPECT_EQ(writtenFloat(5e-324), "4.94066e-324");
}

TEST(Json5Writer, InfinityAndNanGetAPointToo) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(writtenFloat(infinity), "inf.0");
    EXPECT_EQ(writtenFloat(-infinity), "-inf.0");
    EXPECT_EQ(writtenFloat(nan), "nan.0");
    EXPECT_EQ(writtenFloat(-nan), "nan.0");
}

TEST(Json5Writer, FloatIsWhatADefaultStreamPrints) {
    for (double number = 1.2345678e-12; number < 1e15; number *= 7.123) {
        std::ostringstream stream;
        stream << number;
        const std::string plain = stream.str();
        EXPECT_EQ(writtenFloat(number), plain.find('.') == std::string::npos ? plain + ".0" : plain);
    }
}

// As the standard library converts them; among them many that lie on or next to the middle between two texts.
TEST(Json5Writer, FloatsOfEverySizeAreRoundedExactly) {
    std::mt19937_64 random(5);
    const auto expectExact = [](double number) {
        char expected[40];
        std::snprintf(expected, sizeof expected, "%.6g", number);
        const std::string plain = expected;
        ASSERT_EQ(writtenFloat(number), plain.find('.') == std::string::npos ? plain + ".0" : plain);
    };
    for (const double unit : {1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 0.1, 1.0, 10.0, 100.0, 1e3, 1e4, 1e5, 1e6}) {
        for (int round = 0; round < 20000; ++round) {
            const auto digits = static_cast<double>(random() % 20'000'000); // up to eight of them
            expectExact(digits / 1e7 * unit);
            expectExact(-std::ldexp(std::floor(digits), -static_cast<int>(random() % 30)));
            expectExact((std::floor(digits / 20) + 0.5) * unit / 1e5);
        }
        for (const double edge : {unit, unit * 9.999995, unit * 9.999994999}) {
            expectExact(edge);
            expectExact(std::nextafter(edge, 0.0));
            expectExact(std::nextafter(edge, 1e9));
        }
    }
}

TEST(Json5Writer, StringsAndKeysAreNotEscaped) {
    EXPECT_EQ(written(JsonValue::makeString("a\"b\\c\n\xc3")), "\"a\"b\\c\n\xc3\"");
    EXPECT_EQ(rewritten("{a\"b:1}", ""), "{\"a\"b\": 1}");
}

TEST(Json5Writer, EmptyContainersHaveNoLines) {
    for (const char* unit : {"", " ", "  ", "\t"}) {
        EXPECT_EQ(rewritten("{}", unit), "{}");
        EXPECT_EQ(rewritten("[]", unit), "[]");
        EXPECT_EQ(rewritten("[[],[]]", unit), "[[],[]]");
    }
}

TEST(Json5Writer, EmptyObjectBelowTheTopHoldsItsIndent) {
    EXPECT_EQ(rewritten("{a:{}}"), "{\n  \"a\": {  }\n}");
    EXPECT_EQ(rewritten("[{}]"), "[\n  {  }\n]");
    EXPECT_EQ(rewritten("{a:{}}", ""), "{\"a\": {}}");
}

TEST(Json5Writer, ArrayOfScalarsOrArraysStaysOnOneLine) {
    EXPECT_EQ(rewritten("[1,2,3]"), "[1,2,3]");
    EXPECT_EQ(rewritten("['a',null,[1.5,true]]"), "[\"a\",null,[1.5,true]]");
}

// Only the first element decides.
TEST(Json5Writer, ArrayThatStartsWithAnObjectIsSpreadOverLines) {
    EXPECT_EQ(rewritten("[{a:1},2]"), "[\n  {\n    \"a\": 1\n  },\n  2\n]");
    EXPECT_EQ(rewritten("[2,{a:1}]"), "[2,{\n    \"a\": 1\n  }]");
}

TEST(Json5Writer, ObjectMembersStandOnLinesWithASpaceBehindTheComma) {
    EXPECT_EQ(rewritten("{a:1,b:2}"), "{\n  \"a\": 1, \n  \"b\": 2\n}");
}

TEST(Json5Writer, NestsOneUnitDeeperPerLevel) {
    EXPECT_EQ(rewritten("[{frame:5,keys:[{key:87,state:3},{key:65,state:1}]}]"), "[\n"
                                                                                 "  {\n"
                                                                                 "    \"frame\": 5, \n"
                                                                                 "    \"keys\": [\n"
                                                                                 "      {\n"
                                                                                 "        \"key\": 87, \n"
                                                                                 "        \"state\": 3\n"
                                                                                 "      },\n"
                                                                                 "      {\n"
                                                                                 "        \"key\": 65, \n"
                                                                                 "        \"state\": 1\n"
                                                                                 "      }\n"
                                                                                 "    ]\n"
                                                                                 "  }\n"
                                                                                 "]");
}

TEST(Json5Writer, WithoutIndentUnitEverythingIsOnOneLine) {
    EXPECT_EQ(rewritten("{a:1,b:[{c:2},{d:[]}]}", ""), "{\"a\": 1, \"b\": [{\"c\": 2},{\"d\": []}]}");
}

TEST(Json5Writer, StartsAtTheDepthGiven) {
    EXPECT_EQ(rewritten("{a:1}", "--", 2), "{\n------\"a\": 1\n----}");
    EXPECT_EQ(rewritten("{}", "--", 2), "{----}");
    EXPECT_EQ(rewritten("[{a:1}]", "-", 1), "[\n--{\n---\"a\": 1\n--}\n-]");
    EXPECT_EQ(rewritten("{a:1}", "-", -1), "{\n\"a\": 1\n}");
}

TEST(Json5Writer, MembersComeInOrderOfInsertion) {
    EXPECT_EQ(rewritten("{z:1,b:2,a:3,z:4}", ""), "{\"z\": 4, \"b\": 2, \"a\": 3}");
}

TEST(Json5Writer, OnlyTheFieldOfTheKindIsPrinted) {
    EXPECT_EQ(rewritten("{a:[1],a:'x',a:2}", ""), "{\"a\": 2}");
}

TEST(Json5Writer, StreamGetsTheSameBytes) {
    const JsonValue value = parse("{a:[{b:1.5}],c:'text'}");
    std::ostringstream stream;
    stream.precision(2); // the stream's own settings do not count
    writeJson5(value, stream, "  ");
    EXPECT_EQ(stream.str(), written(value));
}

TEST(Json5Writer, AppendsToWhatIsThere) {
    std::string text = "before ";
    writeJson5(JsonValue::makeInteger(1), text, "");
    EXPECT_EQ(text, "before 1");
}

} // namespace
} // namespace dunkman
