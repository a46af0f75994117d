#include <algorithm>
#include <vector>

#include "base/frame_state.h"
#include "tests/workshop/playthrough/playthrough.h"
#include "workshop/playthrough/author.h"
#include "workshop/playthrough/senses.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/world.h"

// How hard the level is, found out by playing it.

namespace dunkman {
namespace {

constexpr double lastFight = 85.0;
constexpr std::int64_t fiveMinutes = 5 * 60 * 60; // steps
constexpr int quickReaction = 12;                 // steps, 0.2 s

const playthrough::Conditions oneStep = {1, 0, {}};
const playthrough::Conditions humanPlayer = {fiveMinutes, quickReaction, {}};

// Picks up what is nearest and takes no risks; knows nothing of the level but how far it goes.
constexpr const char* carefulPlan = "take flamingo\n"
                                    "walk 2 0\nfight careful clear\n"
                                    "walk 13.8 0\nfight careful clear\n"
                                    "walk 33.4 0\nfight careful clear\n"
                                    "walk 42.4 0\nfight careful clear\n"
                                    "walk 57.9 0\nfight careful clear\n"
                                    "walk 74.4 0\nfight careful clear\n"
                                    "walk 85.4 0\n"
                                    "fight careful death\n";

class Balance : public ShippedData {
protected:
    // The x of every line that starts a fight, from left to right.
    static std::vector<double> fightLines() {
        std::vector<double> lines;
        playthrough::perform({}, oneStep, [&](std::int64_t, int) {
            world.walk<Arena>([&](const Arena& arena) { lines.push_back(arena.position.x); });
            return true;
        });
        std::sort(lines.begin(), lines.end());
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
        return lines;
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

TEST_F(Balance, HasSixFights) {
    EXPECT_EQ(fightLines(), (std::vector<double>{13.5, 33.0, 42.0, 57.5, 74.0, lastFight}));
}

TEST_F(Balance, CarefulPlayerReachesTheLastFightWithThreeHearts) {
    int hearts = -1;
    const std::vector<playthrough::Intention> plan = playthrough::readPlan(carefulPlan, "carefulPlan");
    playthrough::perform(plan, humanPlayer, [&](std::int64_t, int) {
        hearts = playthrough::hero().health;
        return playthrough::hero().position.x <= lastFight;
    });
    EXPECT_GT(playthrough::hero().position.x, lastFight);
    EXPECT_GE(hearts, 3);
}

TEST_F(Balance, LastFightOverrunsACarefulPlayerToo) {
    const playthrough::Performance performance =
        playthrough::perform(playthrough::readPlan(carefulPlan, "carefulPlan"), humanPlayer);
    EXPECT_TRUE(performance.died);
}

TEST_F(Balance, StandingStillIsDeathInEveryFight) {
    for (const double line : fightLines()) {
        const playthrough::Performance performance =
            playthrough::perform({}, {fiveMinutes, 0, [line] { standAt(line); }});
        EXPECT_TRUE(performance.died) << "the fight that starts at x = " << line;
    }
}

} // namespace
} // namespace dunkman
