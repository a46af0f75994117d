#include "tests/scenarios/play.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace dunkman {

namespace {

constexpr int firstStrikeSteps = 19; // 0.3 s of wind-up, by rounded sums
constexpr int pauseSteps = 181;      // 3 s, likewise

TEST(Zombies, NoticeTheHeroWithinSixUnits) {
    Play play(R"({"recipe": "zombie", "position": [7, 0]})");
    play.step(120);
    EXPECT_EQ(play.zombie().position, (Vec2{7.0, 0.0}));
    play.walkTo(1.5).step(30);
    EXPECT_LT(play.zombie().position.x, 7.0);
    EXPECT_TRUE(play.zombie().mirrorX);
}

TEST(Zombies, WalkUpToArmsLengthAndStop) {
    Play play(R"({"recipe": "zombie", "position": [5, 1.4]})");
    play.until("it has arrived", [&] { return play.zombie().attackArmed; });
    play.step(60);
    const Vec2 place = play.zombie().position;
    EXPECT_NEAR(place.x, 1.9, 0.2); // half the hero's width and nearly half of its own
    EXPECT_NEAR(place.y, 0.0, 0.2);
    play.step(60);
    EXPECT_NEAR(play.zombie().position.x, place.x, 1e-3);
}

TEST(Zombies, StrikeOnTheBeatWindUpFirstThenOnceEachPause) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    play.until("it has arrived", [&] { return play.zombie().attackArmed; });
    EXPECT_EQ(play.hero().health, 5);
    const auto stepsToHealth = [&](int health) {
        return play.until("the strike", [&play, health] { return play.hero().health == health; });
    };
    EXPECT_EQ(stepsToHealth(4), firstStrikeSteps);
    EXPECT_EQ(stepsToHealth(3), pauseSteps);
    EXPECT_EQ(stepsToHealth(2), pauseSteps);
}

TEST(Zombies, LoseTheirWindUpWhenTheHeroSlipsAway) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    play.until("it has arrived", [&] { return play.zombie().attackArmed; });
    play.hold(keys::a).until("it lost him", [&] { return !play.zombie().attackArmed; });
    play.letGo(keys::a).until("it is back", [&] { return play.zombie().attackArmed; });
    EXPECT_EQ(play.hero().health, 5);
    // The pause that the first arrival began has run out meanwhile, so it winds up anew.
    EXPECT_EQ(play.until("the strike", [&] { return play.hero().health == 4; }), firstStrikeSteps);
}

TEST(Zombies, TwoStrikesAtOnceHurtOnce) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]}, {"recipe": "zombie", "position": [-4, 0]})");
    play.until("both have arrived", [&] { return play.zombie(0).attackArmed && play.zombie(1).attackArmed; });
    play.step(firstStrikeSteps);
    EXPECT_EQ(play.hero().health, 4);
    EXPECT_TRUE(play.hero().invulnerableTimer.running);
}

TEST(Zombies, AHitHeroBlinksForOneAndAHalfSeconds) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    play.until("the strike", [&] { return play.hero().health == 4; });
    // Zombies come before the hero, so his timer already runs in the step of the strike.
    EXPECT_EQ(play.until("he has recovered", [&] { return !play.hero().invulnerableTimer.running; }),
              stepsOf(1.5) - 1);
}

TEST(Zombies, TheSixthHitEndsTheGame) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    int hits = 0;
    std::vector<int> beats;
    int health = play.hero().health;
    int stepsSinceHit = 0;
    play.until(
        "the game is over",
        [&] {
            if (play.hero().health != health) {
                health = play.hero().health;
                beats.push_back(stepsSinceHit);
                stepsSinceHit = 0;
                ++hits;
            }
            ++stepsSinceHit;
            return play.isOver();
        },
        2000);
    EXPECT_EQ(hits, 6);
    EXPECT_EQ(health, -1);
    beats.erase(beats.begin());
    EXPECT_EQ(beats, std::vector<int>(5, pauseSteps));
    // The last of them turned the screen in its own step.
    EXPECT_NE(play.lineOf("Player").find("health=-1"), std::string::npos);
    EXPECT_EQ(play.lineOf("Player").find("health=0"), std::string::npos);
}

TEST(Zombies, HealthZeroIsStillAlive) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    play.until(
        "five strikes", [&] { return play.hero().health == 0; }, 1500);
    play.step(pauseSteps - 1);
    EXPECT_EQ(play.currentScreenName(), "Game");
    play.step();
    EXPECT_TRUE(play.isOver());
}

TEST(Zombies, AfterTheGameComeItsEndTheCreditsAndTheEndOfTheProgram) {
    Play play(R"({"recipe": "zombie", "position": [4, 0]})");
    play.until(
        "the game is over", [&] { return play.isOver(); }, 2000);
    // Ten seconds are 600 or 601 steps by rounded sums; the switch comes a step later.
    EXPECT_NEAR(play.until(
                    "the credits", [&] { return play.currentScreenName() == "Credits"; }, 700),
                601, 1);
    play.untilTheEnd(603);
}

} // namespace

} // namespace dunkman
