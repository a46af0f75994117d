#include "workshop/playthrough/plan.h"

#include <gtest/gtest.h>

namespace dunkman::playthrough {
namespace {

std::string errorOf(std::string_view text) {
    try {
        readPlan(text, "a.plan");
    } catch (const PlanError& error) {
        return error.what();
    }
    return "none";
}

TEST(Plan, HoldsOneIntentionALine) {
    const std::vector<Intention> plan =
        readPlan("# heading\n\nwait 1.5\nwalk -5.25 0.5 # to the sign\ntake pineapple\n", "");
    ASSERT_EQ(plan.size(), 3u);
    EXPECT_EQ(plan[0].verb, Verb::Wait);
    EXPECT_EQ(plan[0].x, 1.5);
    EXPECT_EQ(plan[1].verb, Verb::Walk);
    EXPECT_EQ(plan[1].x, -5.25);
    EXPECT_EQ(plan[1].y, 0.5);
    EXPECT_EQ(plan[1].line, 4);
    EXPECT_EQ(plan[2].word, "pineapple");
}

TEST(Plan, FightHasAMannerAndAnEnd) {
    const std::vector<Intention> plan = readPlan("fight reckless hearts 3\nfight careful clear\n", "");
    ASSERT_EQ(plan.size(), 2u);
    EXPECT_FALSE(plan[0].careful);
    EXPECT_EQ(plan[0].end, FightEnd::Hearts);
    EXPECT_EQ(plan[0].x, 3.0);
    EXPECT_TRUE(plan[1].careful);
    EXPECT_EQ(plan[1].end, FightEnd::Clear);
}

TEST(Plan, ErrorsNameTheLine) {
    EXPECT_EQ(errorOf("wait 1\ndance 2\n"), "a.plan:2: unknown verb: dance");
    EXPECT_EQ(errorOf("walk 3\n"), "a.plan:1: missing y");
    EXPECT_EQ(errorOf("wait soon\n"), "a.plan:1: seconds is no number: soon");
    EXPECT_EQ(errorOf("take crab\n"), "a.plan:1: weapon is crab; it must be flamingo or pineapple");
    EXPECT_EQ(errorOf("fight careful never\n"), "a.plan:1: unknown end of a fight: never");
    EXPECT_EQ(errorOf("wait 1 2\n"), "a.plan:1: unexpected: 2");
}

} // namespace
} // namespace dunkman::playthrough
