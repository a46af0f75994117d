#include "world/properties.h"

#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

TEST(Properties, ANumberAcceptsIntegersAndFloatsOnly) {
    double field = 7.0;
    readProperty(json("{a: 3}").get("a"), field);
    EXPECT_EQ(field, 3.0);
    readProperty(json("{a: 2.5}").get("a"), field);
    EXPECT_EQ(field, 2.5);
    for (const char* text : {"{a: '9'}", "{a: true}", "{a: [9]}", "{a: {}}", "{a: null}", "{}"}) {
        readProperty(json(text).get("a"), field);
        EXPECT_EQ(field, 2.5) << text;
    }
}

TEST(Properties, ABoolAcceptsBoolsOnly) {
    bool field = false;
    for (const char* text : {"{a: 1}", "{a: 1.0}", "{a: 'true'}", "{}"}) {
        readProperty(json(text).get("a"), field);
        EXPECT_FALSE(field) << text;
    }
    readProperty(json("{a: true}").get("a"), field);
    EXPECT_TRUE(field);
}

TEST(Properties, AnIntegerFieldRefusesAFloat) {
    std::int32_t field = -1;
    readProperty(json("{a: 3.0}").get("a"), field);
    EXPECT_EQ(field, -1);
    readProperty(json("{a: 3}").get("a"), field);
    EXPECT_EQ(field, 3);
}

TEST(Properties, AStringAcceptsStringsOnly) {
    std::string field = "old";
    readProperty(json("{a: 5}").get("a"), field);
    EXPECT_EQ(field, "old");
    readProperty(json("{a: ''}").get("a"), field);
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
        readProperty(json(row.text).get("a"), field);
        EXPECT_EQ(field, row.expected) << row.text;
    }
}

TEST(Properties, ReadingATimerSetsItsDurationAndRewindsIt) {
    Timer field{1.0, true, 0.5};
    readProperty(json("{a: 2}").get("a"), field);
    EXPECT_EQ(field.duration, 2.0);
    EXPECT_FALSE(field.running);
    EXPECT_EQ(field.elapsed, 0.0);
}

TEST(Properties, ATimerThatIsNoNumberCountsAsAbsent) {
    Timer field{1.0, true, 0.5};
    readProperty(json("{a: '2'}").get("a"), field);
    readProperty(json("{}").get("a"), field);
    EXPECT_EQ(field.duration, 1.0);
    EXPECT_TRUE(field.running);
    EXPECT_EQ(field.elapsed, 0.5);
}

TEST(Properties, EveryKindIsWrittenAsItself) {
    EXPECT_EQ(writtenProperty(2.0).kind, JsonKind::Float);
    EXPECT_EQ(writtenProperty(std::int32_t{2}).kind, JsonKind::Integer);
    EXPECT_EQ(writtenProperty(true).kind, JsonKind::Bool);
    EXPECT_EQ(writtenProperty(std::string("t")).kind, JsonKind::String);
    const JsonValue pair = writtenProperty(Vec2{1.0, 2.0});
    EXPECT_EQ(pair.arrayValue().size(), 2u);
    EXPECT_EQ(writtenProperty(Timer{0.4, true, 0.2}).kind, JsonKind::Float);
    EXPECT_EQ(writtenProperty(Timer{0.4, true, 0.2}).floatValue(), 0.4);
}

} // namespace

} // namespace dunkman
