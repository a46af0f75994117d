#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <string>

// What the end of the input does at each place.

namespace dunkman {
namespace {

using test::readText;

TEST(Json5ReaderEnd, TextThatEndsRightBehindItsValueIsSoundWithCode5) {
    for (const char* text : {"1", "1e5", "1.", "0", "0x1", "'a'", "[1]", "{a:1}", "true", "null", "NaN"}) {
        const auto reading = readText(text);
        EXPECT_EQ(reading.code, Json5Error::EndOfInput) << text;
        EXPECT_EQ(reading.message, "") << text;
    }
    EXPECT_EQ(readText("1e5").value, "0x1.86ap+16");
    EXPECT_EQ(readText("1.").value, "0x1p+0");
    EXPECT_EQ(readText("0x1").value, "16");
}

TEST(Json5ReaderEnd, WhitespaceOrCommentBehindTheValueClearsTheCode) {
    for (const char* text :
         {"1 ", "1\n", "[1]\r\n", "1 // c", "1 // c\n", "1/* c */", "1 /* c */\n", "1/* open"}) {
        const auto reading = readText(text);
        EXPECT_EQ(reading.code, Json5Error::None) << text;
        EXPECT_EQ(reading.value.find('1'), reading.value.size() == 1 ? 0u : 1u) << text;
    }
}

TEST(Json5ReaderEnd, TextWithoutValueHasCode5) {
    for (const char* text : {"", " ", "\n\n", "// c", "/* c */", "/* open", " /"}) {
        const auto reading = readText(text);
        EXPECT_EQ(reading.code, Json5Error::EndOfInput) << text;
        EXPECT_EQ(reading.value, "null") << text;
    }
}

TEST(Json5ReaderEnd, FirstByteZeroIsNullWithoutFault) {
    const auto reading = readText(std::string("\0{a:1}", 6));
    EXPECT_EQ(reading.code, Json5Error::None);
    EXPECT_EQ(reading.value, "null");
    EXPECT_EQ(reading.position.characters, 0u);
}

TEST(Json5ReaderEnd, ZeroByteLaterIsACharacterLikeAnyOther) {
    const auto reading = readText(std::string(" \0", 2));
    EXPECT_EQ(reading.code, Json5Error::Syntax);
    EXPECT_EQ(reading.message, "");
    EXPECT_EQ(readText(std::string("1\0", 2)).message,
              std::string("Unexpected '") + '\0' + "' after value. Expected end of file.");
}

TEST(Json5ReaderEnd, UnclosedContainersAndStringsHaveCode5) {
    struct Case {
        const char* text;
        const char* value;
    };
    for (const Case& open : {Case{"[", "[]"},
                             Case{"[1", "[1]"},
                             Case{"[1 ", "[1]"},
                             Case{"[1,", "[1]"},
                             Case{"[1, ", "[1]"},
                             Case{"[1,/*", "[1]"},
                             Case{"{", "{}"},
                             Case{"{a", "{}"},
                             Case{"{\"a\"", R"({"a":null})"},
                             Case{"{a:", R"({"a":null})"},
                             Case{"{a: ", R"({"a":null})"},
                             Case{"{a:1", R"({"a":1})"},
                             Case{"{a:1,", R"({"a":1})"},
                             Case{"'abc", R"("")"},
                             Case{"\"abc\\", R"("")"},
                             Case{"'\\x", R"("")"},
                             Case{"'\\x4", R"("")"},
                             Case{"'\\u004", R"("")"},
                             Case{"'\\\r", R"("")"},
                             Case{"'\\\n", R"("")"},
                             Case{"{a:'x',a:'y", R"({"a":""})"}}) {
        const auto reading = readText(open.text);
        EXPECT_EQ(reading.code, Json5Error::EndOfInput) << open.text;
        EXPECT_EQ(reading.message, "") << open.text;
        EXPECT_EQ(reading.value, open.value) << open.text;
    }
}

TEST(Json5ReaderEnd, KeywordCutShortHasCode5) {
    for (const char* text : {"t", "tru", "fals", "n", "[nul"}) {
        EXPECT_EQ(readText(text).code, Json5Error::EndOfInput) << text;
    }
}

TEST(Json5ReaderEnd, HardLiteralCutShortNamesANulByte) {
    const auto nan = readText("Na");
    EXPECT_EQ(nan.code, Json5Error::Syntax);
    EXPECT_EQ(nan.message, std::string("Expected 'N' instead of '") + '\0' + "'.");
    EXPECT_EQ(nan.value, "null");
    EXPECT_EQ(readText("-I").message, std::string("Expected 'n' instead of '") + '\0' + "'.");
}

TEST(Json5ReaderEnd, NumberCutShortIsASyntaxError) {
    for (const char* text : {"-", "+", ".", "1e", "1e-", "[1e"}) {
        EXPECT_EQ(readText(text).code, Json5Error::Syntax) << text;
    }
}

TEST(Json5ReaderEnd, SlashAtTheEndHasCode5) {
    EXPECT_EQ(readText("/").code, Json5Error::EndOfInput);
    EXPECT_EQ(readText("1 /").code, Json5Error::EndOfInput);
    EXPECT_EQ(readText("1 /").value, "1");
}

} // namespace
} // namespace dunkman
