#include "workshop/playthrough/hands.h"

#include <gtest/gtest.h>

#include "base/key_states.h"

namespace dunkman::playthrough {
namespace {

Wish rightWish() {
    Wish wish;
    wish.horizontal = 1;
    return wish;
}

TEST(Hands, HoldADirectionForFiveStepsAtLeast) {
    Hands hands;
    EXPECT_TRUE(hands.move(rightWish()).contains(keys::right));
    for (int step = 1; step < 5; ++step) {
        EXPECT_TRUE(hands.move({}).contains(keys::right)) << step;
    }
    EXPECT_FALSE(hands.move({}).contains(keys::right));
}

TEST(Hands, TapAnActionAndLetGo) {
    Hands hands;
    Wish attack;
    attack.attack = true;
    EXPECT_TRUE(hands.move(attack).contains(keys::x));
    EXPECT_FALSE(hands.canTap());
    for (int step = 1; step < 5; ++step) {
        EXPECT_TRUE(hands.move(attack).contains(keys::x)) << step;
    }
    // A new press needs a release first.
    EXPECT_FALSE(hands.move(attack).contains(keys::x));
    EXPECT_TRUE(hands.canTap());
}

TEST(Hands, DirectionsAreTheArrowKeys) {
    Hands hands;
    Wish wish;
    wish.horizontal = -1;
    wish.vertical = 1;
    EXPECT_EQ(hands.move(wish), (std::set<std::int32_t>{keys::left, keys::up}));
}

} // namespace
} // namespace dunkman::playthrough
