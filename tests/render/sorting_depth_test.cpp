#include "render/sorting_depth.h"

#include <gtest/gtest.h>

// The same depths as the vertex shader gives; that a picture keeps every pixel for it is seen where it is drawn.
namespace dunkman {
namespace {

constexpr Matrix4 perspective = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, -1, 0, 0, 9, 10};
constexpr Matrix4 identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

struct Look {
    SpriteMode mode = SpriteMode::World;
    Vec2 position;
    double angle = 0.0;
    double zOffset = 0.0;
};

// Four wide and one high, about its middle.
DepthRange depthsOf(const Look& look, const Matrix4& view = perspective) {
    return depthRangeOf(look.mode, placementOf(look.position, {4.0, 1.0}, {0.5, 0.5}, {1.0, 1.0}, look.angle),
                        look.zOffset, view);
}

void expectDepths(const DepthRange& depths, double nearest, double farthest) {
    EXPECT_NEAR(depths.nearest, nearest, 2e-5);
    EXPECT_LT(depths.nearest, nearest);
    EXPECT_NEAR(depths.farthest, farthest, 2e-5);
    EXPECT_GT(depths.farthest, farthest);
}

TEST(SortingDepth, OfWhatStandsIsThatOfItsPosition) {
    expectDepths(depthsOf({.position = {3.0, 2.0}}), 0.5 + 2.0 / 256.0, 0.5 + 2.0 / 256.0);
    expectDepths(depthsOf({.position = {3.0, 2.0}, .angle = 45.0, .zOffset = 1.5}), 0.5 + 0.5 / 256.0,
                 0.5 + 0.5 / 256.0);
}

TEST(SortingDepth, OfWhatLiesReachesFromItsLowestToItsHighestCorner) {
    const Look flat = {.mode = SpriteMode::Flat, .position = {3.0, 2.0}, .zOffset = -4.0};
    expectDepths(depthsOf(flat), 0.5 + 5.5 / 256.0, 0.5 + 6.5 / 256.0);
    Look turned = flat;
    turned.angle = 90.0;
    expectDepths(depthsOf(turned), 0.5 + 4.0 / 256.0, 0.5 + 8.0 / 256.0);
}

TEST(SortingDepth, OfTheWorldEndsAHundredUnitsFromTheMiddle) {
    expectDepths(depthsOf({.position = {0.0, 150.0}}), 0.5 + 100.0 / 256.0, 0.5 + 100.0 / 256.0);
    expectDepths(depthsOf({.position = {0.0, -150.0}}), 0.5 - 100.0 / 256.0, 0.5 - 100.0 / 256.0);
}

TEST(SortingDepth, OfAnOverlayIsBeforeTheWorldAndKnowsNoPosition) {
    expectDepths(depthsOf({.mode = SpriteMode::Interface, .position = {0.0, 50.0}, .zOffset = 0.5}),
                 0.1 - 0.0045, 0.1 - 0.0045);
    expectDepths(depthsOf({.mode = SpriteMode::Interface, .zOffset = 7.0}), 0.091, 0.091);
}

TEST(SortingDepth, OfTheLoadingPictureDoesNotFollowItsProgress) {
    expectDepths(depthsOf({.mode = SpriteMode::Loading, .zOffset = 0.5}), 0.1, 0.1);
}

TEST(SortingDepth, IsScaledByAParallelView) {
    expectDepths(depthsOf({.position = {0.0, 0.25}, .zOffset = 0.75}, identity), 0.5, 0.5);
    Matrix4 hearts = identity;
    hearts[10] = -0.01f;
    expectDepths(depthsOf({.position = {0.0, 2.0}, .zOffset = 1.0}, hearts), 0.01, 0.01);
}

TEST(SortingDepth, EndsWhereNothingIsDrawnAnyMore) {
    expectDepths(depthsOf({.zOffset = 5.0}, identity), 0.9999, 0.9999);
    expectDepths(depthsOf({.zOffset = -5.0}, identity), -1.0, -1.0);
}

} // namespace
} // namespace dunkman
