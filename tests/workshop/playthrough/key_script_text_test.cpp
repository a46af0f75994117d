#include <gtest/gtest.h>

#include "workshop/playthrough/author.h"

namespace dunkman::playthrough {
namespace {

TEST(KeyScriptOf, EndsInTheStepOfDeathByLettingGo) {
    Performance performance;
    performance.events = {{10, 0x27, true}, {20, 0x58, true}, {25, 0x58, false}, {99, 0x26, true}};
    performance.steps = 99;
    performance.died = true;
    EXPECT_EQ(keyScriptOf(performance), "10 0x27 down\n20 0x58 down\n25 0x58 up\n99 0x27 up\n");
}

TEST(KeyScriptOf, EndsInTheStepOfDeathWithAPressWhenNoKeyIsDown) {
    Performance performance;
    performance.events = {{10, 0x27, true}, {20, 0x27, false}};
    performance.steps = 40;
    performance.died = true;
    EXPECT_EQ(keyScriptOf(performance), "10 0x27 down\n20 0x27 up\n40 0x26 down\n");
}

TEST(KeyScriptOf, AddsNothingToAGameThatGoesOn) {
    Performance performance;
    performance.events = {{10, 0x27, true}};
    performance.steps = 40;
    EXPECT_EQ(keyScriptOf(performance), "10 0x27 down\n");
}

} // namespace
} // namespace dunkman::playthrough
