#include "world/properties.h"

#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

TEST(Properties, ANumberAcceptsIntegersAndFloatsOnly) {
    double field = 7.0;
    readNumberProperty(json("{a: 3}"), "a", field);
    EXPECT_EQ(field, 3.0);
    readNumberProperty(json("{a: 2.5}"), "a", field);
    EXPECT_EQ(field, 2.5);
    for (const char* text : {"{a: '9'}", "{a: true}", "{a: [9]}", "{a: {}}", "{a: null}", "{}"}) {
        readNumberProperty(json(text), "a", field);
        EXPECT_EQ(field, 2.5) << text;
    }
}

TEST(Properties, ABoolAcceptsBoolsOnly) {
    bool field = false;
    for (const char* text : {"{a: 1}", "{a: 1.0}", "{a: 'true'}", "{}"}) {
        readBoolProperty(json(text), "a", field);
        EXPECT_FALSE(field) << text;
    }
    readBoolProperty(json("{a: true}"), "a", field);
    EXPECT_TRUE(field);
}

TEST(Properties, AnIntegerFieldRefusesAFloat) {
    std::int32_t field = -1;
    readIntegerProperty(json("{a: 3.0}"), "a", field);
    EXPECT_EQ(field, -1);
    readIntegerProperty(json("{a: 3}"), "a", field);
    EXPECT_EQ(field, 3);
}

TEST(Properties, AStringAcceptsStringsOnly) {
    std::string field = "old";
    readStringProperty(json("{a: 5}"), "a", field);
    EXPECT_EQ(field, "old");
    readStringProperty(json("{a: ''}"), "a", field);
    EXPECT_EQ(field, "");
}

struct PairCase {
    const char* text;
    Vec2 expected;
};

TEST(Properties, APairFollowsTheRulesOfPairs) {
    for (const PairCase& row : {PairCase{"{a: 3}", {3.0, 3.0}}, PairCase{"{a: 2.5}", {2.5, 2.5}},
                                PairCase{"{a: [1, 2.5]}", {1.0, 2.5}}, PairCase{"{a: [1, 'b']}", {1.0, 8.0}},
                                PairCase{"{a: ['b', 2]}", {7.0, 8.0}}, PairCase{"{a: [1, 2, 3]}", {7.0, 8.0}},
                                PairCase{"{a: [1]}", {7.0, 8.0}}, PairCase{"{a: 'b'}", {7.0, 8.0}},
                                PairCase{"{a: true}", {7.0, 8.0}}, PairCase{"{}", {7.0, 8.0}}}) {
        Vec2 field{7.0, 8.0};
        readPairProperty(json(row.text), "a", field);
        EXPECT_EQ(field, row.expected) << row.text;
    }
}

TEST(Properties, ReadingATimerSetsItsDurationAndRewindsIt) {
    Timer field{1.0, true, 0.5};
    readTimerProperty(json("{a: 2}"), "a", field);
    EXPECT_EQ(field.duration, 2.0);
    EXPECT_FALSE(field.running);
    EXPECT_EQ(field.elapsed, 0.0);
}

TEST(Properties, ATimerThatIsNoNumberCountsAsAbsent) {
    Timer field{1.0, true, 0.5};
    readTimerProperty(json("{a: '2'}"), "a", field);
    readTimerProperty(json("{}"), "a", field);
    EXPECT_EQ(field.duration, 1.0);
    EXPECT_TRUE(field.running);
    EXPECT_EQ(field.elapsed, 0.5);
}

TEST(Properties, EveryKindIsWrittenAsItself) {
    JsonValue value = JsonValue::makeObject();
    writeProperty(value, "number", 2.0);
    writeProperty(value, "integer", std::int32_t{2});
    writeProperty(value, "flag", true);
    writeProperty(value, "text", std::string_view("t"));
    writeProperty(value, "pair", Vec2{1.0, 2.0});
    writeProperty(value, "timer", Timer{0.4, true, 0.2});
    EXPECT_EQ(value.get("number").kind, JsonKind::Float);
    EXPECT_EQ(value.get("integer").kind, JsonKind::Integer);
    EXPECT_EQ(value.get("flag").kind, JsonKind::Bool);
    EXPECT_EQ(value.get("text").kind, JsonKind::String);
    EXPECT_EQ(value.get("pair").arrayValue.size(), 2u);
    EXPECT_EQ(value.get("timer").kind, JsonKind::Float);
    EXPECT_EQ(value.get("timer").floatValue, 0.4);
}

} // namespace

} // namespace dunkman
