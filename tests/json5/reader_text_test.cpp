#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <string>

// Keys and strings.

namespace dunkman {
namespace {

using test::readText;
using test::valueOf;

TEST(Json5ReaderKey, UnquotedKeyKeepsTrailingWhitespace) {
    EXPECT_EQ(valueOf("{ a : 1 }"), R"({"a ":1})");
    EXPECT_EQ(valueOf("{ a\t\n: 1 }"), R"({"a\x09\x0a":1})");
    EXPECT_EQ(valueOf("{a b:1}"), R"({"a b":1})");
}

TEST(Json5ReaderKey, SingleQuotesBelongToTheKey) { EXPECT_EQ(valueOf("{ 'a': 1 }"), R"({"'a'":1})"); }

TEST(Json5ReaderKey, DoubleQuotedKeyIsAString) {
    EXPECT_EQ(valueOf(R"({"a b:,}": 1})"), R"({"a b:,}":1})");
    EXPECT_EQ(valueOf(R"({"" : 1})"), R"({"":1})");
    EXPECT_EQ(valueOf(R"({"a\n":1})"), R"({"a\\n":1})");
    EXPECT_EQ(valueOf("{\"a\" \n : 1}"), R"({"a":1})");
}

TEST(Json5ReaderKey, UnquotedKeyMayBeEmptyOrHoldAnyByte) {
    EXPECT_EQ(valueOf("{:1}"), R"({"":1})");
    EXPECT_EQ(valueOf("{a{[\"'\xc3\xa4:1}"), R"({"a{[\"'\xc3\xa4":1})");
    EXPECT_EQ(valueOf("{a/*c*/:1}"), R"({"a/*c*/":1})");
}

TEST(Json5ReaderKey, KeyEndsAtTheFirstColonBraceOrComma) {
    EXPECT_EQ(readText("{a}").message, "Expected ':' instead of '}'.");
    EXPECT_EQ(readText("{a}").value, R"({"a":null})");
    EXPECT_EQ(readText("{a,b:1}").message, "Expected ':' instead of ','.");
    EXPECT_EQ(readText("{,}").value, R"({"":null})");
}

TEST(Json5ReaderKey, BackslashInAnUnquotedKeyIsAnError) {
    const auto other = readText("{a\\n:1}");
    EXPECT_EQ(other.code, Json5Error::Syntax);
    EXPECT_EQ(other.message, "Unexpected '\\'.");
    EXPECT_EQ(other.value, "{}");
    EXPECT_EQ(readText("{\\:1}").message, "Unexpected '\\'.");
    const auto unicode = readText("{a\\u00e4:1}");
    EXPECT_EQ(unicode.code, Json5Error::UnsupportedEscape);
    EXPECT_EQ(unicode.message, "Wchar & UTF8 support was disabled during compilation of the library.");
    EXPECT_EQ(unicode.value, "{}");
    EXPECT_EQ(readText("{a\\u00g4:1}").message,
              "Invalid unicode escape code, expected 4 hexadecimal digits, not 4.");
    EXPECT_EQ(readText("{a\\").code, Json5Error::EndOfInput);
}

TEST(Json5ReaderKey, ErrorInsideAKeyInsertsNothing) {
    EXPECT_EQ(readText("{a:1,\"b\\u0041\":2}").value, R"({"a":1})");
    EXPECT_EQ(readText("{a:1,\"b\n\":2}").value, R"({"a":1})");
    EXPECT_EQ(readText("{a:1,b").value, R"({"a":1})");
    EXPECT_EQ(readText("{a:1,\"b").value, R"({"a":1})");
}

TEST(Json5ReaderString, EitherQuoteDelimits) {
    EXPECT_EQ(valueOf(R"("it's")"), R"("it's")");
    EXPECT_EQ(valueOf(R"('say "a"')"), R"("say \"a\"")");
    EXPECT_EQ(valueOf("''"), R"("")");
    EXPECT_EQ(valueOf("\"\""), R"("")");
}

TEST(Json5ReaderString, BytesPassThrough) {
    EXPECT_EQ(valueOf("'\xc3\xa4\xff\x01'"), R"("\xc3\xa4\xff\x01")");
    EXPECT_EQ(valueOf("'\t'"), R"("\x09")");
    EXPECT_EQ(valueOf(std::string("'a\0b'", 5)), R"("a\x00b")");
}

TEST(Json5ReaderString, NoEscapeIsTranslated) {
    EXPECT_EQ(valueOf(R"('\n\t\\\/')"), R"("\\n\\t\\\\\\/")");
    EXPECT_EQ(valueOf(R"("a\"b")"), R"("a\\\"b")");
    EXPECT_EQ(valueOf(R"('it\'s')"), R"("it\\'s")");
    EXPECT_EQ(valueOf(R"('\\')"), R"("\\\\")");
}

// Deliberate: two hexadecimal digits do not end the escape.
TEST(Json5ReaderString, CharacterBehindAHexByteIsEscapedToo) {
    EXPECT_EQ(valueOf(R"('\x41b')"), R"("A\\b")");
    EXPECT_EQ(valueOf(R"('a\x41 b')"), R"("aA\\ b")");
    EXPECT_EQ(valueOf(R"('\x41'')"), R"("A\\'")");
    EXPECT_EQ(valueOf(R"('\x41x42!')"), R"("AB\\!")");
    EXPECT_EQ(valueOf(R"('\xfF\n')"), "\"\\xff\\\\\\\\n\"");
    EXPECT_EQ(readText(R"('\x41')").code, Json5Error::EndOfInput);
    EXPECT_EQ(readText(R"('\x41u0041')").code, Json5Error::UnsupportedEscape);
}

TEST(Json5ReaderString, CarriageReturnContinuationEndsTheEscape) {
    EXPECT_EQ(valueOf("'a\\\r\nb'"), R"("ab")");
    EXPECT_EQ(valueOf("'a\\\rb'"), R"("ab")");
    EXPECT_EQ(valueOf("'a\\\r'"), R"("a")");
    EXPECT_EQ(valueOf("'a\\\r\\n'"), R"("a\\n")");
    EXPECT_EQ(readText("'a\\\r\rb'").message, "Unexpected line break.");
}

// Deliberate: unlike the continuation with a carriage return.
TEST(Json5ReaderString, LineFeedContinuationKeepsTheEscape) {
    EXPECT_EQ(valueOf("'a\\\nb'"), R"("a\\b")");
    EXPECT_EQ(valueOf("'a\\\n\n\nb'"), R"("a\\b")");
    EXPECT_EQ(valueOf("'a\\\n\r\nb'"), R"("ab")");
    EXPECT_EQ(valueOf("'a\\\n'b'"), R"("a\\'b")");
    EXPECT_EQ(valueOf("'a\\\nx41\rb'"), R"("aAb")");
}

TEST(Json5ReaderString, RawLineBreakIsAnErrorAndLeavesAnEmptyString) {
    for (const char* text : {"'ab\nc'", "'ab\rc'", "\"ab\n\""}) {
        const auto reading = readText(text);
        EXPECT_EQ(reading.code, Json5Error::Syntax) << text;
        EXPECT_EQ(reading.message, "Unexpected line break.") << text;
        EXPECT_EQ(reading.value, R"("")") << text;
    }
}

TEST(Json5ReaderString, UnicodeEscapeIsNotSupported) {
    const auto reading = readText(R"('a\u0041')");
    EXPECT_EQ(reading.code, Json5Error::UnsupportedEscape);
    EXPECT_EQ(reading.message, "Wchar & UTF8 support was disabled during compilation of the library.");
    EXPECT_EQ(reading.value, R"("")");
}

// Deliberate: the message names the character behind the offending one.
TEST(Json5ReaderString, BadHexDigitNamesTheNextCharacter) {
    const auto first = readText(R"('\xgh')");
    EXPECT_EQ(first.code, Json5Error::Syntax);
    EXPECT_EQ(first.message, "Invalid hex escape code, expected 2 hexadecimal digits, not h.");
    EXPECT_EQ(first.value, R"("")");
    EXPECT_EQ(first.position.characters, 4u);
    EXPECT_EQ(readText(R"('\x4gh')").message,
              "Invalid hex escape code, expected 2 hexadecimal digits, not h.");
    EXPECT_EQ(readText(R"('\u00zq')").message,
              "Invalid unicode escape code, expected 4 hexadecimal digits, not q.");
    EXPECT_EQ(readText(R"('\uq')").message,
              "Invalid unicode escape code, expected 4 hexadecimal digits, not '.");
}

TEST(Json5ReaderString, BadHexDigitAtTheEndNamesANulByte) {
    const auto reading = readText(R"('\xg)");
    EXPECT_EQ(reading.code, Json5Error::Syntax);
    EXPECT_EQ(reading.message,
              std::string("Invalid hex escape code, expected 2 hexadecimal digits, not ") + '\0' + ".");
}

TEST(Json5ReaderString, ErrorEmptiesTheStringOfARepeatedKey) {
    EXPECT_EQ(readText("{a:'x',a:'\\u0041'}").value, R"({"a":""})");
}

TEST(Json5ReaderString, LongStringsAreReadWhole) {
    const std::string content(3'000'000, 'x');
    EXPECT_EQ(valueOf("'" + content + "'"), "\"" + content + "\"");
    EXPECT_EQ(valueOf("{" + content + ":1}"), "{\"" + content + "\":1}");
}

} // namespace
} // namespace dunkman
