#include "platform/window_rules.h"

#include <gtest/gtest.h>

namespace dunkman::platform {
namespace {

TEST(GameWindow, LetsNobodyErasePixelsThatTheGameDraws) {
    EXPECT_EQ(ownAnswer(messages::eraseBackground, 0), 1); // "it is erased"
}

TEST(GameWindow, HasNoContextMenu) { EXPECT_EQ(ownAnswer(messages::contextMenu, 0), 0); }

TEST(GameWindow, HasNoMenuThatAltOrF10Opens) {
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::keyMenu), 0);
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::mouseMenu), 0);
}

TEST(GameWindow, KnowsACommandWhateverItsLowestFourBitsAre) {
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::move | 2), 0); // by the caption
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::size | 8), 0); // by the lower right corner
}

TEST(GameWindow, KeepsTheDisplayLit) {
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::screenSave), 0);
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::monitorPower), 0);
}

TEST(GameWindow, TakesNoTextAndNoFiles) {
    EXPECT_EQ(ownAnswer(messages::setInputContext, 1), 0);
    EXPECT_EQ(ownAnswer(messages::startComposition, 0), 0);
    EXPECT_EQ(ownAnswer(messages::composition, 'x'), 0);
    EXPECT_EQ(ownAnswer(messages::endComposition, 0), 0);
    EXPECT_EQ(ownAnswer(messages::dropFiles, 0), 0);
}

TEST(GameWindow, CanBeClosed) {
    constexpr std::uint32_t close = 0x0010;
    EXPECT_EQ(ownAnswer(close, 0), std::nullopt);
    EXPECT_EQ(ownAnswer(messages::systemCommand, system_commands::close), std::nullopt);
}

TEST(GameWindow, LeavesEveryOtherMessageToTheSystem) {
    for (const std::uint32_t message :
         {0x0001u, 0x0005u, 0x0006u, 0x000Fu, 0x0046u, 0x0081u, 0x0100u, 0x0201u}) {
        EXPECT_EQ(ownAnswer(message, 0), std::nullopt) << message;
    }
}

constexpr Area opened = {0, 0, 1920, 1080};

TEST(GameWindow, StaysWhereItCoversTheDisplay) { EXPECT_EQ(areaToTake(opened, opened), std::nullopt); }

TEST(GameWindow, TakesASmallerDisplayWhole) {
    EXPECT_EQ(areaToTake(opened, {0, 0, 1366, 768}), (Area{0, 0, 1366, 768}));
}

TEST(GameWindow, TakesALargerDisplayWhole) {
    EXPECT_EQ(areaToTake(opened, {0, 0, 3840, 2160}), (Area{0, 0, 3840, 2160}));
}

TEST(GameWindow, GoesToWhereTheDisplayBegins) {
    EXPECT_EQ(areaToTake(opened, {-1920, 120, 1920, 1080}), (Area{-1920, 120, 1920, 1080}));
}

TEST(GameWindow, StaysAsItIsWhenTheDisplayIsUnknown) {
    EXPECT_EQ(areaToTake(opened, {0, 0, 0, 0}), std::nullopt);
}

} // namespace
} // namespace dunkman::platform
