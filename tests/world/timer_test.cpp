#include "world/timer.h"

#include <gtest/gtest.h>

namespace dunkman {

namespace {

TEST(Timer, DoesNotAdvanceWhileStopped) {
    Timer timer{1.0};
    timer.advance(0.5);
    EXPECT_EQ(timer.elapsed, 0.0);
    EXPECT_FALSE(timer.running);
}

TEST(Timer, StopsAndRewindsWhenItReachesItsDuration) {
    Timer timer{1.0, true};
    timer.advance(0.5);
    EXPECT_TRUE(timer.running);
    EXPECT_EQ(timer.elapsed, 0.5);
    timer.advance(0.5);
    EXPECT_FALSE(timer.running);
    EXPECT_EQ(timer.elapsed, 0.0);
}

TEST(Timer, DropsWhatExceedsItsDuration) {
    Timer timer{1.0, true, 0.9};
    timer.advance(5.0);
    EXPECT_EQ(timer.elapsed, 0.0);
}

TEST(Timer, SumsDecideNotRoundFigures) {
    // Twenty-four sixtieths come out just below 0.4.
    Timer timer{0.4, true};
    int steps = 0;
    while (timer.running) {
        timer.advance(1.0 / 60.0);
        ++steps;
    }
    EXPECT_EQ(steps, 25);
}

} // namespace

} // namespace dunkman
