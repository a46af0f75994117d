#include "render/cover.h"

#include <gtest/gtest.h>

#include "base/frame_state_writer.h"

namespace dunkman {
namespace {

// A picture of 160 by 80 pixels that shows 16 by 8 units about the origin: ten pixels a unit.
class PictureOf160By80 {
public:
    PictureOf160By80() {
        writable::frameState.clientWidth = 160;
        writable::frameState.clientHeight = 80;
    }
    ~PictureOf160By80() { writable::frameState = {}; }
    PictureOf160By80(const PictureOf160By80&) = delete;
    PictureOf160By80& operator=(const PictureOf160By80&) = delete;
};

class CoverTest : public testing::Test {
protected:
    CoverTest() {
        ground.width = 100;
        ground.height = 100;
        for (TextureCoverage& coverage : ground.coverage) {
            coverage.opaqueEnd = 100;
        }
    }

    // Ground from a lower left corner.
    Sprite section(Vec2 corner, Vec2 size) {
        return {.texture = ground, .mirrorY = true, .position = corner, .size = size, .pivot = {0.0, 0.0}};
    }

    static constexpr Matrix4 view = {0.125f, 0, 0, 0, 0, 0.25f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
    static constexpr PixelRect everything = {0, 0, 160, 80};
    const PictureOf160By80 picture;
    Texture2D ground;
    Cover cover{view};
};

TEST_F(CoverTest, LeavesEverythingOpenBeforeAnythingIsAdded) { EXPECT_EQ(cover.uncovered(), everything); }

TEST_F(CoverTest, LeavesWhatLiesAboveTheGroundAndAPixelMore) {
    cover.add(section({-8.0, -4.0}, {16.0, 5.0}));
    EXPECT_EQ(cover.uncovered(), (PixelRect{0, 49, 160, 31}));
}

TEST_F(CoverTest, JoinsSectionsThatShareAnEdge) {
    cover.add(section({0.0, -4.0}, {8.0, 5.0}));
    cover.add(section({-8.0, -4.0}, {8.0, 2.0}));
    cover.add(section({-8.0, -2.0}, {8.0, 3.0}));
    EXPECT_EQ(cover.uncovered(), (PixelRect{0, 49, 160, 31}));
}

TEST_F(CoverTest, DoesNotTrustAnEdgeThatIsRounded) {
    cover.add(section({-8.0, -4.0}, {9.0, 5.0}));
    cover.add(section({0.1, -4.0}, {5.0, 5.0}));
    cover.add(section({5.1, -4.0}, {3.0, 5.0}));
    EXPECT_EQ(cover.uncovered(), everything) << "the seam may show the sky down to the bottom";
}

TEST_F(CoverTest, OfTheWholePictureLeavesNothing) {
    cover.add(section({-16.0, -16.0}, {32.0, 32.0}));
    EXPECT_EQ(cover.uncovered(), PixelRect());
}

TEST_F(CoverTest, CountsOnlyTheOpaqueRows) {
    ground.coverage.fill(
        {.opaqueBegin = 50, .opaqueEnd = 100}); // of a picture that stands upright: the lower half
    cover.add(section({-8.0, -4.0}, {16.0, 8.0}));
    EXPECT_EQ(cover.uncovered(), (PixelRect{0, 38, 160, 42}));
    Cover onItsHead(view);
    Sprite sprite = section({-8.0, -4.0}, {16.0, 8.0});
    sprite.mirrorY = false;
    onItsHead.add(sprite);
    EXPECT_EQ(onItsHead.uncovered(), (PixelRect{0, 0, 160, 42}));
}

TEST_F(CoverTest, PassesOverWhatMayShowTheBackdrop) {
    Sprite turned = section({-16.0, -16.0}, {32.0, 32.0});
    turned.angle = 1.0;
    cover.add(turned);
    cover.add(section({16.0, -16.0}, {-32.0, 32.0})); // its back is not drawn
    ground.coverage = {};
    cover.add(section({-16.0, -16.0}, {32.0, 32.0}));
    EXPECT_EQ(cover.uncovered(), everything);
}

TEST_F(CoverTest, KnowsNothingOfASkewView) {
    Matrix4 skew = view;
    skew[1] = 0.1f;
    Cover askew(skew);
    askew.add(section({-16.0, -16.0}, {32.0, 32.0}));
    EXPECT_EQ(askew.uncovered(), everything);
}

TEST_F(CoverTest, GoesOnWithoutRoomForMore) {
    for (int row = 0; row < 100; ++row) {
        cover.add(section({-8.0, -4.0}, {16.0, 5.0}));
    }
    EXPECT_EQ(cover.uncovered(), (PixelRect{0, 49, 160, 31}));
}

} // namespace
} // namespace dunkman
