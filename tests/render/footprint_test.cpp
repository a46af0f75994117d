#include "render/footprint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/frame_state_writer.h"

namespace dunkman {
namespace {

// A picture of 200 by 100 pixels that shows 20 by 10 units about the origin.
class FootprintTest : public testing::Test {
protected:
    FootprintTest() {
        writable::frameState.clientWidth = 200;
        writable::frameState.clientHeight = 100;
    }
    ~FootprintTest() override { writable::frameState = {}; }

    static Footprint of(Vec2 position, Vec2 size, double angle = 0.0) {
        return footprintOf(placementOf(position, size, {0.0, 0.0}, {1.0, 1.0}, angle), view).value();
    }

    static Texture2D texture(std::uint32_t width, std::uint32_t height) {
        Texture2D described;
        described.width = width;
        described.height = height;
        return described;
    }

    static constexpr Matrix4 view = {0.1f, 0, 0, 0, 0, 0.2f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
};

TEST_F(FootprintTest, CountsPixelsFromTheLowerLeftCorner) {
    const Footprint footprint = of({1.0, 2.0}, {3.0, 4.0});
    EXPECT_NEAR(footprint.at(0.0, 0.0).x, 110.0, 1e-4);
    EXPECT_NEAR(footprint.at(0.0, 0.0).y, 70.0, 1e-4);
    EXPECT_NEAR(footprint.at(1.0, 1.0).x, 140.0, 1e-4);
    EXPECT_NEAR(footprint.at(1.0, 1.0).y, 110.0, 1e-4);
}

TEST_F(FootprintTest, TurnsCounterClockwiseWithTheSprite) {
    const Footprint footprint = of({0.0, 0.0}, {3.0, 4.0}, 90.0);
    EXPECT_NEAR(footprint.across.x, 0.0, 1e-4);
    EXPECT_NEAR(footprint.across.y, 30.0, 1e-4);
    EXPECT_NEAR(footprint.up.x, -40.0, 1e-4);
}

TEST_F(FootprintTest, DividesByTheDepthOfTheView) {
    Matrix4 distant = view;
    distant[15] = 2.0f;
    const Placement placement = placementOf({}, {3.0, 4.0}, {0.0, 0.0}, {1.0, 1.0}, 0.0);
    EXPECT_NEAR(footprintOf(placement, distant).value().across.x, 15.0, 1e-4);
}

TEST_F(FootprintTest, IsUnknownInAViewThatIsAskewOrThatLooksAway) {
    const Placement placement = placementOf({}, {3.0, 4.0}, {0.0, 0.0}, {1.0, 1.0}, 0.0);
    for (const std::size_t entry : {std::size_t{3}, std::size_t{7}}) {
        Matrix4 askew = view;
        askew[entry] = 0.5f;
        EXPECT_FALSE(footprintOf(placement, askew));
    }
    EXPECT_FALSE(footprintOf(placement, Matrix4{}));
}

TEST_F(FootprintTest, IsUnknownWhileThereIsNoPicture) {
    writable::frameState.clientWidth = 0;
    EXPECT_FALSE(footprintOf(placementOf({}, {1.0, 1.0}, {}, {1.0, 1.0}, 0.0), view));
}

TEST_F(FootprintTest, TellsTheDenserDirectionOfTexels) {
    EXPECT_NEAR(texelsPerPixel(of({}, {3.0, 4.0}), texture(60, 40)), 2.0, 1e-4);
    EXPECT_NEAR(texelsPerPixel(of({}, {3.0, 4.0}), texture(15, 160)), 4.0, 1e-4);
}

TEST_F(FootprintTest, TellsTheSameDensityHoweverASpriteIsTurned) {
    for (const double angle : {30.0, 90.0, 135.0}) {
        EXPECT_NEAR(texelsPerPixel(of({}, {3.0, 4.0}, angle), texture(60, 80)), 2.0, 1e-4) << angle;
    }
}

TEST_F(FootprintTest, OfAQuadWithoutAreaHoldsEndlesslyManyTexels) {
    EXPECT_EQ(texelsPerPixel(of({}, {0.0, 4.0}), texture(60, 80)), std::numeric_limits<double>::infinity());
}

TEST_F(FootprintTest, TakesTheCoverageOfTheCoarsestLevelThatMayBeSampled) {
    CoverageByLevel picture;
    for (std::size_t level = 0; level < coverageLevels; ++level) {
        picture.at(level).count = static_cast<std::uint8_t>(40 - level);
    }
    EXPECT_EQ(coverageAt(0.7, picture).count, 40);
    EXPECT_EQ(coverageAt(1.0, picture).count, 39) << "a driver may take a little more than the true scale";
    EXPECT_EQ(coverageAt(2.5, picture).count, 38);
    EXPECT_EQ(coverageAt(5.0, picture).count, 37);
    EXPECT_EQ(coverageAt(6.0, picture).count, 0) << "so far away nothing is known";
    EXPECT_EQ(coverageAt(std::numeric_limits<double>::infinity(), picture).count, 0);
    EXPECT_EQ(coverageAt(std::nan(""), picture).count, 0);
}

} // namespace
} // namespace dunkman
