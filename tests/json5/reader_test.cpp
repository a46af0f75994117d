#include "json5/reader.h"

#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <string>

namespace dunkman {
namespace {

using test::readText;
using test::valueOf;

TEST(Json5Reader, EmptyTextAndTextWithoutAValueAreNull) {
    EXPECT_EQ(valueOf(""), "null");
    EXPECT_EQ(valueOf(" \t\r\n"), "null");
    EXPECT_EQ(valueOf("// only a comment"), "null");
    EXPECT_EQ(valueOf(" /* one */ // two\n"), "null");
    EXPECT_EQ(valueOf("/* open"), "null");
}

TEST(Json5Reader, ReadsKeywords) {
    EXPECT_EQ(valueOf("true"), "true");
    EXPECT_EQ(valueOf("false"), "false");
    EXPECT_EQ(valueOf("null"), "null");
    EXPECT_EQ(valueOf(" [true,false , null]"), "[true,false,null]");
}

TEST(Json5Reader, ReadsArraysWithAndWithoutTrailingComma) {
    EXPECT_EQ(valueOf("[]"), "[]");
    EXPECT_EQ(valueOf("[ \n ]"), "[]");
    EXPECT_EQ(valueOf("[1, 2, ]"), "[1,2]");
    EXPECT_EQ(valueOf("[1,2,]"), "[1,2]");
    EXPECT_EQ(valueOf("[[1],[],[2,[3]]]"), "[[1],[],[2,[3]]]");
}

TEST(Json5Reader, ReadsObjectsWithAndWithoutTrailingComma) {
    EXPECT_EQ(valueOf("{}"), "{}");
    EXPECT_EQ(valueOf("{ \n }"), "{}");
    EXPECT_EQ(valueOf("{a: 1,}"), R"({"a":1})");
    EXPECT_EQ(valueOf("{a:1, b:{c:[2]},}"), R"({"a":1,"b":{"c":[2]}})");
}

TEST(Json5Reader, WhitespaceIsFourCharactersOnly) {
    EXPECT_EQ(valueOf(" \t\r\n1"), "1");
    EXPECT_EQ(readText("\f1").code, Json5Error::Syntax);
    EXPECT_EQ(readText("\v1").code, Json5Error::Syntax);
    EXPECT_EQ(readText("\xc2\xa0"
                       "1")
                  .code,
              Json5Error::Syntax);
    EXPECT_EQ(readText("1\f").message, "Unexpected '\f' after value. Expected end of file.");
}

TEST(Json5Reader, LineCommentEndsAtLineFeedCarriageReturnOrEnd) {
    EXPECT_EQ(valueOf("// c\n1"), "1");
    EXPECT_EQ(valueOf("// c\r1"), "1");
    EXPECT_EQ(valueOf("1 // at the very end"), "1");
    EXPECT_EQ(readText("1 // at the very end").code, Json5Error::None);
}

TEST(Json5Reader, BlockCommentEndsAtItsFirstEndMark) {
    EXPECT_EQ(valueOf("/* c */1"), "1");
    EXPECT_EQ(valueOf("/***/1"), "1");
    EXPECT_EQ(valueOf("/* a **/1"), "1");
    EXPECT_EQ(valueOf("/*/ / * */1"), "1");
    EXPECT_EQ(valueOf("/*\n\n*/1"), "1");
    EXPECT_EQ(readText("/* a */ */1").code, Json5Error::Syntax);
}

// A skip ends behind its first comment, and the next reader of a character goes on there.
TEST(Json5Reader, OneSkipTakesOneComment) {
    EXPECT_EQ(valueOf("[/*a*/ 1]"), "[1]");
    EXPECT_EQ(valueOf("[/*a*/ /*b*/ 1]"), "[1]");
    EXPECT_EQ(valueOf("[1/*c*/,2]"), "[1,2]");
    EXPECT_EQ(valueOf("[1,/*c*/2]"), "[1,2]");
    EXPECT_EQ(valueOf("/*a*//*b*/1"), "1");
    const auto behind = readText("[1 /*c*/ ,2]");
    EXPECT_EQ(behind.message, "Expected ']' instead of ' '.");
    EXPECT_EQ(behind.value, "[1]");
    EXPECT_EQ(readText("[1 /*c*/ /*d*/,2]").message, "Expected ']' instead of ' '.");
}

// Two skips stand before a document's value.
TEST(Json5Reader, TwoCommentsAtMostStandBeforeADocument) {
    EXPECT_EQ(valueOf("// one\n// two\n[1]"), "[1]");
    EXPECT_EQ(readText("// one\n// two\n [1]").code, Json5Error::Syntax);
    EXPECT_EQ(readText("// one\n// two\n// three\n[1]").code, Json5Error::Syntax);
    EXPECT_EQ(readText("// one\n// two\n// three\n[1]").value, "null");
}

TEST(Json5Reader, TwoCommentsBeforeAClosingBracketMakeAnElement) {
    const auto reading = readText("[/*a*/ /*b*/ ]");
    EXPECT_EQ(reading.code, Json5Error::Syntax);
    EXPECT_EQ(reading.message, "");
    EXPECT_EQ(reading.value, "[null]");
}

TEST(Json5Reader, CommentBeforeAnUnquotedKeyLeavesItsWhitespaceInTheKey) {
    EXPECT_EQ(valueOf("{/*c*/ a:1}"), R"({" a":1})");
    EXPECT_EQ(valueOf("{a:1,/*c*/ b:2}"), R"({" b":2,"a":1})");
    EXPECT_EQ(valueOf("{ // c\n  a:1}"), R"({"  a":1})");
    EXPECT_EQ(valueOf("{/*c*/a:1}"), R"({"a":1})");
}

TEST(Json5Reader, RepeatedKeyParsesIntoTheMemberAlreadyThere) {
    EXPECT_EQ(valueOf("{a:1,a:2}"), R"({"a":2})");
    EXPECT_EQ(valueOf("{a:[1],a:[2]}"), R"({"a":[1,2]})");
    EXPECT_EQ(valueOf("{a:{b:1},a:{c:2}}"), R"({"a":{"b":1,"c":2}})");
}

TEST(Json5Reader, FieldsStayWhenARepeatedKeyChangesTheKind) {
    EXPECT_EQ(valueOf("{a:[1],a:2,a:[3]}"), R"({"a":[1,3]})");
    EXPECT_EQ(valueOf("{a:{b:1},a:null,a:{c:2}}"), R"({"a":{"b":1,"c":2}})");
    EXPECT_EQ(valueOf("{a:1,a:'x',a:0x1}"), R"({"a":272})"); // (1 * 16 + 1) * 16
}

TEST(Json5Reader, ObjectsKeepTheOrderOfTheFile) {
    JsonValue value;
    Json5Report report;
    parseDocument("{z:1,a:2,m:3,a:4}", report, value);
    std::string order;
    for (const JsonMember& member : value.objectValue()) {
        order += member.key();
    }
    EXPECT_EQ(order, "zam");
}

TEST(Json5Reader, ReadsAThousandLevels) {
    const std::string arrays = std::string(1000, '[') + std::string(1000, ']');
    EXPECT_EQ(valueOf(arrays), arrays);
    std::string objects;
    for (int level = 0; level < 999; ++level) {
        objects += "{\"a\":";
    }
    objects += "{}" + std::string(999, '}');
    EXPECT_EQ(valueOf(objects), objects);
}

TEST(Json5Reader, StopsAtTheThousandAndFirstLevel) {
    const auto arrays = readText(std::string(1001, '[') + std::string(1001, ']'));
    EXPECT_EQ(arrays.code, Json5Error::Syntax);
    EXPECT_EQ(arrays.message, "Nesting is deeper than 1000 levels.");
    EXPECT_EQ(arrays.position.characters, 1001u);
    EXPECT_EQ(arrays.value, std::string(1000, '[') + "null" + std::string(1000, ']'));
    EXPECT_EQ(readText(std::string(1000, '[') + "{").message, "Nesting is deeper than 1000 levels.");
    EXPECT_EQ(readText(std::string(1000000, '[')).message, "Nesting is deeper than 1000 levels.");
}

TEST(Json5Reader, NestingCountsDepthNotNumber) {
    std::string text = "[";
    for (int count = 0; count < 3000; ++count) {
        text += "[],{},{a:[{}]},";
    }
    EXPECT_EQ(readText(text + "]").code, Json5Error::EndOfInput);
}

TEST(Json5Reader, TypicalFile) {
    EXPECT_EQ(
        valueOf(
            "// recipes\n{\n  hero: {\n    _type: 'Player', \"size\": [2, 2.5],\n    mirrorX: true, },\n}\n"),
        R"({"hero":{"_type":"Player","mirrorX":true,"size":[2,0x1.4p+1]}})");
}

} // namespace
} // namespace dunkman
