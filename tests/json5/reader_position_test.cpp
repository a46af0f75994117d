#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

// The counters, and the primitives that move them.

namespace dunkman {
namespace {

using test::readText;

using Counters = std::array<std::uint64_t, 4>;

Counters countersOf(const Json5Position& position) {
    return {position.characters, position.line, position.column, position.previousLineLength};
}

Counters countersAfter(std::string_view text) { return countersOf(readText(text).position); }

TEST(Json5Position, CountsCharactersLinesAndColumns) {
    EXPECT_EQ(countersAfter(""), (Counters{0, 0, 0, 0}));
    EXPECT_EQ(countersAfter("123"), (Counters{3, 0, 3, 0}));
    EXPECT_EQ(countersAfter("[1,\n2]"), (Counters{6, 1, 2, 4}));
    EXPECT_EQ(countersAfter("\n\n\n1"), (Counters{4, 3, 1, 1}));
    EXPECT_EQ(countersAfter("[1]\r\n"), (Counters{5, 1, 0, 5}));
    EXPECT_EQ(countersAfter("'\xc3\xa4'"), (Counters{4, 0, 4, 0}));
}

TEST(Json5Position, StandsBehindTheOffendingCharacter) {
    EXPECT_EQ(countersAfter("{\n  a: 1\n  b: 2\n}"), (Counters{12, 2, 3, 7}));
    EXPECT_EQ(countersAfter("[1,\n  'ab\n"), (Counters{10, 2, 0, 6}));
    EXPECT_EQ(countersAfter("1 x..."), (Counters{3, 0, 3, 0}));
    EXPECT_EQ(countersAfter("/x123"), (Counters{2, 0, 2, 0}));
}

TEST(Json5Position, LookingAheadDoesNotCount) {
    EXPECT_EQ(countersAfter("'\\xg123'"), (Counters{4, 0, 4, 0}));
    EXPECT_EQ(countersAfter("0xg123"), (Counters{3, 0, 3, 0}));
}

TEST(Json5Position, CharactersGivenBackByAKeywordStayCounted) {
    EXPECT_EQ(countersAfter("trx123"), (Counters{3, 0, 3, 0}));
    EXPECT_EQ(countersAfter("falx123"), (Counters{4, 0, 4, 0}));
}

TEST(Json5Primitives, ReadDeliversAPushedBackCharacterAgainWithoutCountingIt) {
    Json5Reader reader("ab");
    EXPECT_EQ(reader.read(), 'a');
    reader.pushBack();
    EXPECT_EQ(reader.read(), 'a');
    EXPECT_EQ(countersOf(reader.report().position), (Counters{1, 0, 1, 0}));
    EXPECT_EQ(reader.read(), 'b');
    EXPECT_EQ(reader.report().code, Json5Error::None);
    EXPECT_EQ(reader.read(), '\0');
    EXPECT_EQ(reader.report().code, Json5Error::EndOfInput);
    EXPECT_EQ(countersOf(reader.report().position), (Counters{2, 0, 2, 0}));
}

TEST(Json5Primitives, PeekLooksPastAPendingPushBack) {
    Json5Reader reader("ab");
    reader.read();
    reader.pushBack();
    EXPECT_EQ(reader.peek(), 'b');
    EXPECT_EQ(reader.read(), 'a');
    EXPECT_EQ(reader.peek(), 'b');
    EXPECT_EQ(reader.read(), 'b');
    EXPECT_EQ(reader.peek(), '\0');
    EXPECT_EQ(reader.report().code, Json5Error::EndOfInput);
}

TEST(Json5Primitives, SecondPushBackIsAnErrorYetStands) {
    Json5Reader reader("ab");
    reader.read();
    reader.pushBack();
    reader.pushBack();
    EXPECT_EQ(reader.report().code, Json5Error::SecondPushBack);
    EXPECT_EQ(reader.report().message, "");
    EXPECT_EQ(reader.read(), 'a');
    EXPECT_EQ(reader.read(), 'b');
}

TEST(Json5Primitives, ExpectTakesTheWholeLiteral) {
    Json5Reader reader("alse,");
    EXPECT_TRUE(reader.expect("alse", Json5Reader::Expect::Soft));
    EXPECT_EQ(reader.read(), ',');
}

TEST(Json5Primitives, SoftExpectGivesBackAsManyAsMatchedButKeepsThemCounted) {
    Json5Reader reader("al\nxy");
    EXPECT_FALSE(reader.expect("al\ny", Json5Reader::Expect::Soft));
    EXPECT_EQ(reader.report().code, Json5Error::None);
    EXPECT_EQ(countersOf(reader.report().position), (Counters{4, 1, 1, 3}));
    EXPECT_EQ(reader.read(), 'l'); // three of the four characters taken
    EXPECT_EQ(countersOf(reader.report().position), (Counters{5, 1, 2, 3}));
}

TEST(Json5Primitives, SoftExpectGivesNothingBackAtTheEnd) {
    Json5Reader reader("al");
    EXPECT_FALSE(reader.expect("alse", Json5Reader::Expect::Soft));
    EXPECT_EQ(reader.report().code, Json5Error::EndOfInput);
    EXPECT_EQ(reader.read(), '\0');
}

TEST(Json5Primitives, HardExpectNamesBothCharacters) {
    Json5Reader reader("alxe");
    EXPECT_FALSE(reader.expect("alse", Json5Reader::Expect::Hard));
    EXPECT_EQ(reader.report().code, Json5Error::Syntax);
    EXPECT_EQ(reader.report().message, "Expected 's' instead of 'x'.");
}

} // namespace
} // namespace dunkman
