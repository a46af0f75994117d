#include "tools/inspect/nearest.h"

#include <array>

#include <gtest/gtest.h>

namespace dunkman::inspect {

namespace {

constexpr std::array<std::string_view, 5> keys = {"health", "position", "size", "Zombie", "attackRateTimer"};

TEST(NearestName, IsTheOneThatWasMistyped) {
    EXPECT_EQ(nearestName("heatlh", keys), "health");                   // swapped
    EXPECT_EQ(nearestName("positon", keys), "position");                // left out
    EXPECT_EQ(nearestName("sizze", keys), "size");                      // added
    EXPECT_EQ(nearestName("dize", keys), "size");                       // changed
    EXPECT_EQ(nearestName("ZOMBIE", keys), "Zombie");                   // in capitals
    EXPECT_EQ(nearestName("attackratetimer", keys), "attackRateTimer"); // in small letters
}

TEST(NearestName, IsNoneWhereNothingIsNear) {
    EXPECT_EQ(nearestName("kraken", keys), "");
    EXPECT_EQ(nearestName("", keys), "");
    EXPECT_EQ(nearestName(std::string(100'000, 'x'), keys), "");
    EXPECT_EQ(suggestion("kraken", keys), "");
}

TEST(NearestName, IsTheFirstOfSeveral) {
    constexpr std::array<std::string_view, 2> tints = {"tintR", "tintG"};
    EXPECT_EQ(nearestName("tintB", tints), "tintR");
    EXPECT_EQ(suggestion("tintB", tints), " Is \"tintR\" meant?");
}

} // namespace

} // namespace dunkman::inspect
