#include <algorithm>
#include <vector>

#include "base/frame_state.h"
#include "tests/workshop/playthrough/playthrough.h"
#include "workshop/playthrough/author.h"
#include "workshop/playthrough/careful.h"
#include "workshop/playthrough/senses.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/world.h"

// How hard the level is, found out by playing it.

namespace dunkman {
namespace {

constexpr std::int64_t fiveMinutes = 5 * 60 * 60; // steps
constexpr int quickReaction = 12;                 // steps, 0.2 s

const std::vector<playthrough::Intention> nobody; // presses no key
const playthrough::Conditions humanPlayer = {fiveMinutes, quickReaction, {}};

class Balance : public ShippedData {
protected:
    static std::vector<playthrough::Intention> carefulPlan() {
        return playthrough::readPlan(playthrough::carefulPlan(), "carefulPlan");
    }

    // Only the fight that starts at the line is left, and the hero stands just behind it.
    static void standAt(double line) {
        world.walk<Arena>([line](Arena& arena) {
            if (arena.position.x != line) {
                world.queueDestroy(arena);
            }
        });
        world.applyPending();
        world.first<Player>()->position = {line + 0.1, 0.0};
        world.first<Camera>()->position = {line, 0.0};
    }
};

TEST_F(Balance, EveryActAfterTheFirstHasAFight) {
    const std::vector<playthrough::Act> beginnings = acts();
    const std::vector<double> lines = fights();
    for (std::size_t act = 1; act < beginnings.size(); ++act) {
        const auto first = std::lower_bound(lines.begin(), lines.end(), beginnings[act].from);
        ASSERT_NE(first, lines.end()) << beginnings[act].name;
        EXPECT_TRUE(act + 1 == beginnings.size() || *first < beginnings[act + 1].from)
            << beginnings[act].name;
    }
}

TEST_F(Balance, CarefulPlayerReachesTheLastFightWithThreeHearts) {
    int hearts = -1;
    const double lastFight = fights().back();
    playthrough::perform(carefulPlan(), humanPlayer, [&](std::int64_t, int) {
        hearts = playthrough::hero().health;
        return playthrough::hero().position.x <= lastFight;
    });
    EXPECT_GT(playthrough::hero().position.x, lastFight);
    EXPECT_GE(hearts, 3);
}

TEST_F(Balance, LastFightOverrunsACarefulPlayerToo) {
    const playthrough::Performance performance = playthrough::perform(carefulPlan(), humanPlayer);
    EXPECT_TRUE(performance.died);
}

TEST_F(Balance, StandingStillIsDeathInEveryFight) {
    for (const double line : fights()) {
        const playthrough::Performance performance =
            playthrough::perform(nobody, {fiveMinutes, 0, [line] { standAt(line); }});
        EXPECT_TRUE(performance.died) << "the fight that starts at x = " << line;
    }
}

} // namespace
} // namespace dunkman
