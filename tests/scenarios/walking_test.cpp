#include "tests/scenarios/play.h"

#include <gtest/gtest.h>

namespace dunkman {

namespace {

constexpr double topSpeed = 2.5; // units per second: a sixtieth's thrust against a sixtieth's friction

TEST(Walking, GoesOnAtTopSpeedWhileTheKeyIsHeld) {
    Play play;
    play.hold(keys::d).step(120);
    const double start = play.hero().position.x;
    play.step(60);
    EXPECT_NEAR(play.hero().position.x - start, topSpeed, 1e-6);
}

TEST(Walking, TakesAMomentToGetGoingAndToStop) {
    Play play;
    play.hold(keys::d).step(6);
    EXPECT_LT(play.hero().position.x, 6 * topSpeed / 60.0 * 0.6);
    play.step(120).letGo(keys::d);
    const double letGoAt = play.hero().position.x;
    play.step(120);
    // What is left of the speed after a step's friction, over the friction's eight a second.
    EXPECT_NEAR(play.hero().position.x - letGoAt, topSpeed * (1.0 - 8.0 / 60.0) / 8.0, 1e-6);
    EXPECT_NEAR(play.hero().velocity.x, 0.0, 1e-6);
}

TEST(Walking, ArrowsDoWhatTheLettersDo) {
    const auto walk = [](std::int32_t right, std::int32_t up, std::int32_t left, std::int32_t down) {
        Play play;
        play.hold(right).step(30).hold(up).step(30).letGo(right).letGo(up);
        play.hold(left).step(20).hold(down).step(40);
        return play.allWorlds();
    };
    EXPECT_EQ(walk(keys::d, keys::w, keys::a, keys::s), walk(keys::right, keys::up, keys::left, keys::down));
}

TEST(Walking, TwoKeysForOneWayAreNoFasterThanOne) {
    Play play;
    play.hold(keys::d).hold(keys::right).step(180);
    EXPECT_NEAR(play.hero().velocity.x, topSpeed * (1.0 - 8.0 / 60.0), 1e-6);
}

TEST(Walking, OppositeKeysCancelOut) {
    Play play;
    play.hold(keys::d).hold(keys::left).hold(keys::w).hold(keys::s).step(60);
    EXPECT_EQ(play.hero().position, (Vec2{0.0, 0.0}));
}

TEST(Walking, TurnsRoundAndKeepsFacingThatWayWhenStanding) {
    Play play;
    play.tap(keys::a).step(60);
    EXPECT_TRUE(play.hero().mirrorX);
    play.tap(keys::d).step(60);
    EXPECT_FALSE(play.hero().mirrorX);
}

TEST(Walking, StaysOnTheBeach) {
    Play play;
    play.hold(keys::a).hold(keys::w).step(600);
    EXPECT_EQ(play.hero().position, (Vec2{-11.0, 1.5}));
    play.letGo(keys::w).hold(keys::s).step(600);
    EXPECT_EQ(play.hero().position, (Vec2{-11.0, -1.5}));
}

TEST(Walking, TheCameraFollowsButNotBeyondItsEnd) {
    Play play;
    play.walkTo(20.0).step(300);
    EXPECT_NEAR(play.camera().position.x, play.hero().position.x, 1e-6);
    play.walkTo(-11.0).step(300);
    EXPECT_EQ(play.camera().position.x, -5.0);
}

} // namespace

} // namespace dunkman
