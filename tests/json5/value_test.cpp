#include "json5/value.h"

#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace dunkman {
namespace {

JsonKind reportedActual = JsonKind::Null;
JsonKind reportedWanted = JsonKind::Null;
int reports = 0;

void noteMismatch(const JsonValue& value, JsonKind wanted) {
    reportedActual = value.kind;
    reportedWanted = wanted;
    ++reports;
}

class JsonKindMismatch : public ::testing::Test {
protected:
    void SetUp() override {
        reports = 0;
        jsonKindMismatchHandler = noteMismatch;
    }
    void TearDown() override { resetJsonKindMismatchHandler(); }
};

TEST(JsonValue, KindsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Bool), 0u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Integer), 1u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Float), 2u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::String), 3u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Array), 4u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Object), 5u);
    EXPECT_EQ(static_cast<unsigned>(JsonKind::Null), 6u);
}

TEST(JsonValue, NewValueIsNullWithAllFieldsEmpty) {
    const JsonValue value;
    EXPECT_EQ(value.kind, JsonKind::Null);
    EXPECT_FALSE(value.boolValue());
    EXPECT_EQ(value.intValue(), 0);
    EXPECT_EQ(value.floatValue(), 0.0);
    EXPECT_TRUE(value.stringValue().empty());
    EXPECT_TRUE(value.arrayValue().empty());
    EXPECT_TRUE(value.objectValue().empty());
}

TEST(JsonValue, MakersSetKindAndField) {
    EXPECT_EQ(canonicalText(JsonValue::makeBool(true)), "true");
    EXPECT_EQ(canonicalText(JsonValue::makeInteger(-7)), "-7");
    EXPECT_EQ(canonicalText(JsonValue::makeFloat(1.5)), "0x1.8p+0");
    EXPECT_EQ(canonicalText(JsonValue::makeString("a")), "\"a\"");
    EXPECT_EQ(canonicalText(JsonValue::makeArray()), "[]");
    EXPECT_EQ(canonicalText(JsonValue::makeArray({JsonValue::makeInteger(1), JsonValue()})), "[1,null]");
    EXPECT_EQ(canonicalText(JsonValue::makeObject()), "{}");
    EXPECT_EQ(canonicalText(JsonValue::makePair(1.0, -2.0)), "[0x1p+0,-0x1p+1]");
}

TEST(JsonValue, AbsentMemberIsNotFoundAndReadsAsNull) {
    JsonValue value = JsonValue::makeObject();
    value.member("here") = JsonValue::makeInteger(1);
    EXPECT_EQ(value.find("absent"), nullptr);
    EXPECT_EQ(value.get("absent").kind, JsonKind::Null);
    EXPECT_EQ(&value.get("absent"), &JsonValue::null());
    EXPECT_FALSE(value.contains("absent"));
    ASSERT_NE(value.find("here"), nullptr);
    EXPECT_EQ(value.find("here")->intValue(), 1);
    EXPECT_EQ(value.get("here").intValue(), 1);
    EXPECT_TRUE(value.contains("here"));
}

TEST(JsonValue, FindObjectWantsAnObject) {
    JsonValue value = JsonValue::makeObject();
    value.member("object") = JsonValue::makeObject();
    value.member("object").member("a") = JsonValue::makeInteger(3);
    value.member("number") = JsonValue::makeInteger(3);
    ASSERT_NE(value.findObject("object"), nullptr);
    EXPECT_TRUE(value.findObject("object")->contains("a"));
    EXPECT_EQ(value.findObject("number"), nullptr);
    EXPECT_EQ(value.findObject("absent"), nullptr);
}

TEST(JsonValue, MemberInsertsNullOnceAndKeepsTheKind) {
    JsonValue value = JsonValue::makeObject();
    EXPECT_EQ(value.member("a").kind, JsonKind::Null);
    value.member("a") = JsonValue::makeInteger(5);
    EXPECT_EQ(value.member("a").intValue(), 5);
    EXPECT_EQ(value.objectValue().size(), 1u);
    JsonValue null;
    null.member("a");
    EXPECT_EQ(null.kind, JsonKind::Null);
}

TEST(JsonValue, AppendAddsANullElementForFilling) {
    JsonValue value = JsonValue::makeArray();
    value.append() = JsonValue::makeInteger(1);
    JsonValue& last = value.append();
    EXPECT_EQ(last.kind, JsonKind::Null);
    EXPECT_EQ(canonicalText(value), "[1,null]");
}

TEST(JsonValue, CopyIsAnIndependentTree) {
    JsonValue source = JsonValue::makeObject();
    JsonValue& list = source.member("list") = JsonValue::makeArray({JsonValue::makeObject()});
    list.arrayValue()[0].member("x") = JsonValue::makeInteger(1);
    JsonValue copy = source;
    copy.member("list").arrayValue()[0].member("x").setInteger(2);
    copy.member("list").append();
    copy.member("other");
    EXPECT_EQ(canonicalText(source), R"({"list":[{"x":1}]})");
    EXPECT_EQ(canonicalText(copy), R"({"list":[{"x":2},null],"other":null})");
}

void expectAllFields(const JsonValue& value) {
    EXPECT_TRUE(value.boolValue());
    EXPECT_EQ(value.intValue(), 4);
    EXPECT_EQ(value.floatValue(), 0.5);
    EXPECT_EQ(value.stringValue(), "a string that is too long for the value itself");
    ASSERT_EQ(value.arrayValue().size(), 1u);
    EXPECT_EQ(value.arrayValue()[0].intValue(), 1);
    EXPECT_EQ(value.objectValue().size(), 1u);
    EXPECT_EQ(value.get("a").intValue(), 2);
}

JsonValue withAllFields() {
    JsonValue value = JsonValue::makeArray({JsonValue::makeInteger(1)});
    value.setString("a string that is too long for the value itself");
    value.setInteger(4);
    value.member("a").setInteger(2);
    value.setBool(true);
    value.setFloat(0.5);
    return value;
}

TEST(JsonValue, FieldsStayWhenTheKindChanges) {
    JsonValue value = withAllFields();
    EXPECT_EQ(value.kind, JsonKind::Float);
    expectAllFields(value);
    value.kind = JsonKind::Null;
    expectAllFields(value);
    value.append();
    EXPECT_EQ(value.arrayValue().size(), 2u);
    value.setString("s");
    EXPECT_EQ(value.stringValue(), "s");
    EXPECT_EQ(value.intValue(), 4);
}

TEST(JsonValue, CopyAndMoveKeepFieldsOfOtherKinds) {
    JsonValue source = withAllFields();
    const JsonValue copy = source;
    source.setInteger(5);
    source.member("a").setInteger(6);
    expectAllFields(copy);
    JsonValue assigned = JsonValue::makeString("before");
    assigned = copy;
    expectAllFields(assigned);
    expectAllFields(JsonValue(std::move(assigned)));
}

TEST(JsonValue, MovedFromIsNull) {
    JsonValue source = JsonValue::makeInteger(3);
    const JsonValue target = std::move(source);
    EXPECT_EQ(target.intValue(), 3);
    EXPECT_EQ(source.kind, JsonKind::Null); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(source.intValue(), 0);
}

// Crosses the length up to which strings lie in the value itself.
TEST(JsonValue, StringsOfEveryLengthAreKeptAndCopied) {
    std::string text;
    JsonValue value;
    for (int length = 0; length < 40; ++length) {
        EXPECT_EQ(JsonValue::makeString(text).stringValue(), text);
        value.setString(text);
        const JsonValue copy = value;
        EXPECT_EQ(copy.stringValue(), text);
        text += static_cast<char>('a' + length % 26);
    }
    value.setString("short again");
    EXPECT_EQ(value.stringValue(), "short again");
    value.setString(std::string_view("a\0b", 3));
    EXPECT_EQ(value.stringValue(), std::string_view("a\0b", 3));
}

TEST(JsonValue, StringCanBeReplacedByAPartOfItself) {
    for (const std::string text : {"0123456789", "0123456789012345678901234567890123456789"}) {
        JsonValue value = JsonValue::makeString(text);
        value.setString(value.stringValue().substr(3));
        EXPECT_EQ(value.stringValue(), text.substr(3));
    }
}

TEST(JsonValue, ArraysKeepTheirElementsWhileTheyGrow) {
    JsonValue value = JsonValue::makeArray();
    for (int number = 0; number < 1000; ++number) {
        value.append().setString("element number " + std::to_string(number));
        ASSERT_EQ(value.arrayValue().size(), static_cast<std::size_t>(number) + 1);
    }
    const JsonValue copy = value;
    for (std::size_t number = 0; number < 1000; ++number) {
        ASSERT_EQ(copy.arrayValue()[number].stringValue(), "element number " + std::to_string(number));
    }
}

TEST(JsonValue, MoveTakesTheContainers) {
    JsonValue source = JsonValue::makeObject();
    source.member("a") = JsonValue::makeInteger(1);
    source.append();
    const JsonValue* const member = source.find("a");
    const JsonValue target = std::move(source);
    EXPECT_EQ(target.find("a"), member);
    EXPECT_EQ(target.arrayValue().size(), 1u);
}

TEST(JsonValue, CanBeReplacedByItsOwnParts) {
    JsonValue value = JsonValue::makeObject();
    value.member("inner") = JsonValue::makeObject();
    value.member("inner").member("deep") = JsonValue::makeString("kept");
    value = value.member("inner");
    EXPECT_EQ(canonicalText(value), R"({"deep":"kept"})");
    JsonValue list = JsonValue::makeArray({JsonValue::makeArray({JsonValue::makeInteger(9)})});
    list = std::move(list.arrayValue()[0]);
    EXPECT_EQ(canonicalText(list), "[9]");
    value.objectValue() = value.objectValue();
    EXPECT_EQ(canonicalText(value), R"({"deep":"kept"})");
}

TEST(JsonMembers, KeysAreExactBytes) {
    JsonMembers members;
    members["key"].setInteger(1);
    members["Key"].setInteger(2);
    members["key "].setInteger(3);
    members[std::string_view("key\0", 4)].setInteger(4);
    members[""].setInteger(5);
    EXPECT_EQ(members.size(), 5u);
    EXPECT_EQ(members["key"].intValue(), 1);
    EXPECT_EQ(members["Key"].intValue(), 2);
    EXPECT_EQ(members["key "].intValue(), 3);
    EXPECT_EQ(members[std::string_view("key\0", 4)].intValue(), 4);
    EXPECT_EQ(members[""].intValue(), 5);
}

// Crosses the sizes at which the index comes into being and grows.
TEST(JsonMembers, FindsEveryMemberAtEverySize) {
    JsonMembers members;
    for (int count = 0; count < 300; ++count) {
        members["key" + std::to_string(count)].setInteger(count);
        ASSERT_EQ(members.size(), static_cast<std::size_t>(count) + 1);
        for (int number = 0; number <= count; ++number) {
            const JsonValue* found = members.find("key" + std::to_string(number));
            ASSERT_NE(found, nullptr) << number << " of " << count;
            ASSERT_EQ(found->intValue(), number);
        }
        ASSERT_EQ(members.find("key" + std::to_string(count + 1)), nullptr);
    }
}

TEST(JsonMembers, AreWalkedInOrderOfFirstInsertion) {
    JsonMembers members;
    std::string expected;
    for (int number = 40; number > 0; --number) {
        members[std::to_string(number)].setInteger(number);
        members["40"].setBool(true);
        expected += std::to_string(number) + " ";
    }
    const JsonMembers copy = members;
    for (const JsonMembers* walked : std::vector<const JsonMembers*>{&members, &copy}) {
        std::string order;
        for (const JsonMember& member : *walked) {
            order += std::string(member.key()) + " ";
            EXPECT_EQ(std::to_string(member.value.intValue()), member.key());
        }
        EXPECT_EQ(order, expected);
    }
}

TEST(JsonMembers, ReferencesOutliveLaterInsertions) {
    JsonMembers members;
    JsonValue& first = members["first"];
    for (int number = 0; number < 1000; ++number) {
        members[std::to_string(number)];
    }
    first.setInteger(77);
    EXPECT_EQ(members.find("first")->intValue(), 77);
}

TEST(JsonMembers, CopyHasAnIndexOfItsOwn) {
    JsonMembers source;
    for (int number = 0; number < 50; ++number) {
        source[std::to_string(number)].setInteger(number);
    }
    JsonMembers copy = source;
    copy["new"].setInteger(1);
    copy["7"].setInteger(-7);
    EXPECT_FALSE(source.contains("new"));
    EXPECT_EQ(source.find("7")->intValue(), 7);
    source.clear();
    EXPECT_TRUE(source.empty());
    EXPECT_FALSE(source.contains("7"));
    EXPECT_EQ(copy.find("49")->intValue(), 49);
}

TEST(JsonMembers, KeepTheirMembersWhenTheyAreMoved) {
    for (const int size : {0, 1, 2, 3, 6, 7, 11, 50}) {
        JsonMembers source;
        for (int number = 0; number < size; ++number) {
            source[std::to_string(number)].setInteger(number);
        }
        JsonMembers target;
        target["dropped"];
        target = std::move(source);
        EXPECT_TRUE(source.empty()); // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(source.find("0"), nullptr);
        target["one more"].setInteger(-1);
        ASSERT_EQ(target.size(), static_cast<std::size_t>(size) + 1);
        for (int number = 0; number < size; ++number) {
            EXPECT_EQ(target.find(std::to_string(number))->intValue(), number);
        }
        EXPECT_EQ(target.find("one more")->intValue(), -1);
        EXPECT_EQ(target.find("dropped"), nullptr);
        source["again"].setInteger(1);
        EXPECT_EQ(source.find("again")->intValue(), 1);
    }
}

TEST(JsonMembers, OfAPassingValueCanBeWalked) {
    const auto make = [] {
        JsonValue value = JsonValue::makeObject();
        for (const char* key : {"a", "b", "c", "d"}) {
            value.member(key).setString("a string that is too long for the value itself");
        }
        return value;
    };
    std::string keys;
    for (const JsonMember& member : make().objectValue()) {
        keys += member.key();
        EXPECT_EQ(member.value.stringValue(), "a string that is too long for the value itself");
    }
    EXPECT_EQ(keys, "abcd");
}

TEST(JsonMembers, ManyMembersAreDestroyedWithoutMuchStack) {
    JsonMembers members;
    for (int number = 0; number < 200000; ++number) {
        members[std::to_string(number)];
    }
    members.clear();
    EXPECT_TRUE(members.empty());
}

TEST_F(JsonKindMismatch, TypedReadOfTheRightKindIsSilent) {
    EXPECT_TRUE(JsonValue::makeBool(true).asBool());
    EXPECT_EQ(JsonValue::makeInteger(4).asInteger(), 4);
    EXPECT_EQ(JsonValue::makeFloat(4.5).asFloat(), 4.5);
    EXPECT_EQ(JsonValue::makeString("s").asString(), "s");
    EXPECT_EQ(JsonValue::makePair(1, 2).asArray().size(), 2u);
    EXPECT_TRUE(JsonValue::makeObject().asObject().empty());
    EXPECT_EQ(reports, 0);
}

TEST_F(JsonKindMismatch, TypedReadOfAnotherKindReportsAndReadsTheField) {
    JsonValue value = JsonValue::makeInteger(3);
    value.setString("text");
    EXPECT_EQ(value.asInteger(), 3);
    EXPECT_EQ(reportedActual, JsonKind::String);
    EXPECT_EQ(reportedWanted, JsonKind::Integer);
    EXPECT_FALSE(value.asBool());
    EXPECT_EQ(reportedWanted, JsonKind::Bool);
    EXPECT_EQ(value.asFloat(), 0.0);
    EXPECT_EQ(reportedWanted, JsonKind::Float);
    EXPECT_TRUE(value.asArray().empty());
    EXPECT_EQ(reportedWanted, JsonKind::Array);
    EXPECT_TRUE(value.asObject().empty());
    EXPECT_EQ(reportedWanted, JsonKind::Object);
    EXPECT_EQ(JsonValue::makeInteger(1).asString(), "");
    EXPECT_EQ(reportedWanted, JsonKind::String);
    EXPECT_EQ(reports, 6);
}

TEST_F(JsonKindMismatch, IntegerIsNoFloat) {
    EXPECT_EQ(JsonValue::makeInteger(3).asFloat(), 0.0);
    EXPECT_EQ(reports, 1);
}

TEST_F(JsonKindMismatch, WithoutHandlerTheFieldIsReadAllTheSame) {
    resetJsonKindMismatchHandler();
    EXPECT_EQ(JsonValue::makeString("x").asInteger(), 0);
    EXPECT_EQ(reports, 0);
}

struct PairCase {
    const char* text;
    double x;
    double y;
    bool set;
};

class ReadPair : public ::testing::TestWithParam<PairCase> {};

TEST_P(ReadPair, SetsWhatIsANumberAndLeavesTheRest) {
    const PairCase& expected = GetParam();
    JsonValue value;
    Json5Report report;
    parseDocument(expected.text, report, value);
    double x = -1.0;
    double y = -2.0;
    EXPECT_EQ(readPair(value, x, y), expected.set);
    EXPECT_EQ(x, expected.x);
    EXPECT_EQ(y, expected.y);
}

INSTANTIATE_TEST_SUITE_P(
    JsonValue, ReadPair,
    ::testing::Values(PairCase{"3", 3.0, 3.0, true}, PairCase{"2.5", 2.5, 2.5, true},
                      PairCase{"[1, 2.5]", 1.0, 2.5, true}, PairCase{"[0.5, -2]", 0.5, -2.0, true},
                      PairCase{"[1]", -1.0, -2.0, false}, PairCase{"[]", -1.0, -2.0, false},
                      PairCase{"[1, 2, 3]", -1.0, -2.0, false}, PairCase{"[1, 'a']", 1.0, -2.0, true},
                      PairCase{"['a', 1]", -1.0, -2.0, false}, PairCase{"[[1], 1]", -1.0, -2.0, false},
                      PairCase{"null", -1.0, -2.0, false}, PairCase{"true", -1.0, -2.0, false},
                      PairCase{"'1'", -1.0, -2.0, false}, PairCase{"{x: 1, y: 2}", -1.0, -2.0, false}));

} // namespace
} // namespace dunkman
