#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <string>

namespace dunkman {
namespace {

using test::readText;

struct ErrorCase {
    const char* text;
    Json5Error code;
    const char* message;
    const char* value; // what had been built
};

class Json5ReaderError : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(Json5ReaderError, IsRecordedAndTheValueKeepsWhatWasBuilt) {
    const ErrorCase& expected = GetParam();
    const auto reading = readText(expected.text);
    EXPECT_EQ(reading.code, expected.code);
    EXPECT_EQ(reading.message, expected.message);
    EXPECT_EQ(reading.value, expected.value);
}

constexpr Json5Error syntax = Json5Error::Syntax;
constexpr Json5Error slash = Json5Error::SecondPushBack;

INSTANTIATE_TEST_SUITE_P(
    All, Json5ReaderError,
    ::testing::Values(
        ErrorCase{"{a:1} x", syntax, "Unexpected 'x' after value. Expected end of file.", R"({"a":1})"},
        ErrorCase{"1 2", syntax, "Unexpected '2' after value. Expected end of file.", "1"},
        ErrorCase{"'a' \xc3", syntax, "Unexpected '\xc3' after value. Expected end of file.", R"("a")"},
        ErrorCase{"[1 2]", syntax, "Expected ']' instead of '2'.", "[1]"},
        ErrorCase{"[1}", syntax, "Expected ']' instead of '}'.", "[1]"},
        ErrorCase{"[,1]", syntax, "", "[null]"}, ErrorCase{"[1,,2]", syntax, "", "[1,null]"},
        ErrorCase{"{a:1 b:2}", syntax, "Expected '}' instead of 'b'.", R"({"a":1})"},
        ErrorCase{"{a:1]", syntax, "Expected '}' instead of ']'.", R"({"a":1})"},
        ErrorCase{"{\"a\" 1}", syntax, "Expected ':' instead of '1'.", R"({"a":null})"},
        ErrorCase{"{\"a\"}", syntax, "Expected ':' instead of '}'.", R"({"a":null})"},
        ErrorCase{"{a:}", syntax, "", R"({"a":null})"},
        ErrorCase{"{a:1,,b:2}", syntax, "Expected ':' instead of ','.", R"({"":null,"a":1})"},
        ErrorCase{"nulx", syntax, "", "null"}, ErrorCase{"[True]", syntax, "", "[null]"},
        ErrorCase{"{a:[1,{b:2,c:[3,x]}],d:4}", syntax, "", R"({"a":[1,{"b":2,"c":[3,null]}]})"},
        ErrorCase{"/1", slash, "", "null"}, ErrorCase{"1 /2", slash, "", "1"},
        ErrorCase{"1/2", slash, "", "1"}, ErrorCase{"[1,/ 2]", slash, "", "[1]"},
        ErrorCase{"{/}", slash, "", "{}"}, ErrorCase{"{\"a\" / :1}", slash, "", R"({"a":null})"}));

// Comments around a value: what stands behind the second one.
TEST(Json5ReaderErrors, StraySlashBehindACommentIsFoundToo) {
    EXPECT_EQ(readText("1/*c*/ /x").code, Json5Error::SecondPushBack);
    EXPECT_EQ(readText("1/*c*/x").message, "Unexpected 'x' after value. Expected end of file.");
    EXPECT_EQ(readText("1/*c*//*d*/x").message, "Unexpected 'x' after value. Expected end of file.");
    EXPECT_EQ(readText("1/*c*//*d*/ x").message, "Unexpected ' ' after value. Expected end of file.");
}

TEST(Json5ReaderErrors, SoftMismatchOfAKeywordLeavesTheValueOfARepeatedKey) {
    EXPECT_EQ(readText("{a:true,a:fals}").value, R"({"a":true})");
    EXPECT_EQ(readText("{a:3,a:-}").value, R"({"a":3})");
}

TEST(Json5ReaderErrors, CodesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<unsigned>(Json5Error::None), 0u);
    EXPECT_EQ(static_cast<unsigned>(Json5Error::UnsupportedEscape), 1u);
    EXPECT_EQ(static_cast<unsigned>(Json5Error::Syntax), 2u);
    EXPECT_EQ(static_cast<unsigned>(Json5Error::StreamFailed), 3u);
    EXPECT_EQ(static_cast<unsigned>(Json5Error::SecondPushBack), 4u);
    EXPECT_EQ(static_cast<unsigned>(Json5Error::EndOfInput), 5u);
}

} // namespace
} // namespace dunkman
