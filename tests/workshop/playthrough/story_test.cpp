#include "workshop/playthrough/story.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dunkman::playthrough {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<Act> acts = {{-10.0, "Arrival"}, {8.0, "Bar beach"}, {28.0, "Pier"}};
const std::vector<double> fights = {13.5, 33.0, 42.5};

// The hero walks there, following the line of the plan, and the game ends after a minute.
std::vector<std::string> faultsAt(double x, int planLine, bool died, bool inFight = false) {
    Story story(acts, fights);
    story.note(1, -8.0, false);
    story.note(planLine, x, inFight);
    return story.faults(3600, died);
}

TEST(Story, IsToldWhenTheHeroFallsBehindTheLineOfTheLastFight) {
    EXPECT_THAT(faultsAt(42.6, 60, true), IsEmpty());
}

TEST(Story, NamesStepActAndLineOfADeathBeforeAnAct) {
    EXPECT_THAT(
        faultsAt(14.0, 31, true),
        ElementsAre(
            "step 3600 (60.0 s), act 2 (Bar beach), x = 14.0, line 31 of the plan: the hero dies before "
            "act 3 (Pier)",
            "act 3 (Pier) is not reached, the fight at x = 33 neither, the fight at x = 42.5 neither"));
}

TEST(Story, NamesAFightThatIsNotReachedInTheAct) {
    EXPECT_THAT(
        faultsAt(40.0, 52, true),
        ElementsAre("step 3600 (60.0 s), act 3 (Pier), x = 40.0, line 52 of the plan: the hero dies before "
                    "the fight at x = 42.5",
                    "act 3 (Pier): the fight at x = 42.5 is not reached"));
}

TEST(Story, NamesTheFightInWhichTheHeroDiesTooEarly) {
    EXPECT_EQ(
        faultsAt(23.0, 36, true, true).at(0),
        "step 3600 (60.0 s), act 2 (Bar beach), x = 23.0, line 36 of the plan: the hero dies in the fight at "
        "x = 13.5, before act 3 (Pier)");
}

TEST(Story, IsNotToldWhenTheHeroLives) {
    EXPECT_THAT(
        faultsAt(43.0, 60, false),
        ElementsAre("step 3600 (60.0 s), act 3 (Pier), x = 43.0, line 60 of the plan: the hero is still "
                    "alive, but he has to fall in the last fight"));
}

TEST(Story, KnowsHowFarTheHeroWentBeforeHeTurnedBack) {
    Story story(acts, fights);
    story.note(60, 43.0, true);
    story.note(61, 39.0, true);
    EXPECT_THAT(story.faults(3600, true), IsEmpty());
}

TEST(Story, SaysNothingOfAPlanThatIsDone) {
    EXPECT_EQ(
        faultsAt(43.0, 0, false).at(0),
        "step 3600 (60.0 s), act 3 (Pier), x = 43.0: the hero is still alive, but he has to fall in the last "
        "fight");
}

TEST(Story, OfALevelWithoutActsIsAboutItsFights) {
    Story story({}, {5.0, 9.0});
    story.note(2, 6.0, false);
    EXPECT_THAT(
        story.faults(60, true),
        ElementsAre("step 60 (1.0 s), the level, x = 6.0, line 2 of the plan: the hero dies before the fight "
                    "at x = 9",
                    "the level: the fight at x = 9 is not reached"));
}

TEST(Story, TakesItsActsFromThePlan) {
    const std::vector<Act> found =
        actsOf(readPlan("act -11 Arrival # by bus\nwait 1\nact 8.5 Bar beach\n", ""));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].from, -11.0);
    EXPECT_EQ(found[0].name, "Arrival");
    EXPECT_EQ(found[1].from, 8.5);
    EXPECT_EQ(found[1].name, "Bar beach");
}

} // namespace
} // namespace dunkman::playthrough
