#include "workshop/art/texture/mip_chain.h"

#include "tests/workshop/art/cartoon.h"
#include "workshop/art/texture/resample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace dunkman {

namespace {

constexpr Rgba red = {255, 0, 0, 255};
constexpr Rgba white = {255, 255, 255, 255};
constexpr Rgba black = {0, 0, 0, 255};

} // namespace

TEST(MipChain, CountsLevelsDownToOneTexel) {
    EXPECT_EQ(mipLevelCount(1, 1), 1);
    EXPECT_EQ(mipLevelCount(4, 4), 3);
    EXPECT_EQ(mipLevelCount(256, 64), 9);
    EXPECT_EQ(mipLevelCount(1481, 1004), 11);
}

TEST(MipChain, RoundsOddSizesDownAndStopsAtOne) {
    const std::vector<Picture> levels = makeMipChain(makeFlat(1481, 1004, red), {});
    const std::vector<std::pair<int, int>> sizes = {{1481, 1004}, {740, 502}, {370, 251}, {185, 125},
                                                    {92, 62},     {46, 31},   {23, 15},   {11, 7},
                                                    {5, 3},       {2, 1},     {1, 1}};
    ASSERT_EQ(levels.size(), sizes.size());
    for (std::size_t level = 0; level < sizes.size(); ++level) {
        EXPECT_EQ(levels[level].width, sizes[level].first) << level;
        EXPECT_EQ(levels[level].height, sizes[level].second) << level;
    }
}

TEST(MipChain, KeepsAFlatPictureFlatAtEveryLevel) {
    for (const Picture& level : makeMipChain(makeFlat(37, 23, {200, 100, 50, 255}), {})) {
        for (const Rgba& texel : level.texels) {
            EXPECT_EQ(texel, (Rgba{200, 100, 50, 255}));
        }
    }
}

TEST(MipChain, CutsLevelZeroHardAndClearsWhatIsCut) {
    Picture picture = makeFlat(4, 4, {90, 80, 70, 128});
    picture.at(1, 2) = {90, 80, 70, 127};
    const Picture level = makeMipChain(picture, {}).front();
    EXPECT_EQ(level.at(0, 0), (Rgba{90, 80, 70, 255}));
    EXPECT_EQ(level.at(1, 2), (Rgba{0, 0, 0, 0}));
}

TEST(MipChain, DoesNotMixTransparentColourIntoEdges) {
    // Left half red, right half transparent green: no level may show any green, nor a darker red.
    Picture picture = makeFlat(64, 64, red);
    for (int y = 0; y < 64; ++y) {
        for (int x = 32; x < 64; ++x) {
            picture.at(x, y) = {0, 255, 0, 0};
        }
    }
    for (const Picture& level : makeMipChain(picture, {})) {
        for (const Rgba& texel : level.texels) {
            EXPECT_TRUE(texel == red || texel == Rgba{}) << level.width;
        }
    }
}

TEST(MipChain, KeepsTheCoverageOfACartoon) {
    const std::vector<Picture> levels = makeMipChain(makeCartoon(240, 320), {});
    const double whole = coverage(levels.front());
    for (const Picture& level : levels) {
        // The drawing is symmetric in places, where two texels or four stand or fall together.
        const double step = 1.0 / static_cast<double>(level.texels.size());
        EXPECT_NEAR(coverage(level), whole, std::max(2.0 * step, 0.001)) << level.width;
    }
}

TEST(MipChain, KeepsAThinLineThatACutAtHalfAlphaWouldLose) {
    // A slanted line a little more than one texel wide: a string of lamps, the stays of a mast.
    Picture picture(128, 128);
    for (int y = 0; y < 128; ++y) {
        for (int x = 0; x < 128; ++x) {
            const double inside = 1.1 - std::fabs(y + 0.5 - (40.0 + 0.37 * x));
            picture.at(x, y) = {255, 255, 255,
                                static_cast<std::uint8_t>(255.0 * std::clamp(inside, 0.0, 1.0))};
        }
    }
    const std::vector<Picture> levels = makeMipChain(picture, {});
    const SoftPicture soft = shrink(picture, 32, 32, {});
    const auto kept = std::count_if(soft.texels.begin(), soft.texels.end(),
                                    [](const SoftTexel& texel) { return texel.alpha >= 0.5F; });
    const double whole = coverage(levels[0]);
    EXPECT_LT(static_cast<double>(kept) / (32.0 * 32.0), 0.1 * whole);
    for (std::size_t level = 1; level <= 4; ++level) {
        const double step = 1.0 / static_cast<double>(levels[level].texels.size());
        EXPECT_NEAR(coverage(levels[level]), whole, std::max(step, 0.02 * whole)) << level;
    }
}

TEST(MipChain, KeepsASpeckAtTheSmallestLevel) {
    Picture picture(64, 64);
    picture.at(20, 20) = red;
    EXPECT_EQ(makeMipChain(picture, {}).back().at(0, 0), red);
}

TEST(MipChain, LeavesAnEmptyPictureEmpty) {
    for (const Picture& level : makeMipChain(Picture(12, 20), {})) {
        EXPECT_EQ(coverage(level), 0.0);
    }
}

TEST(MipChain, SeesTheOtherEdgeOfATile) {
    Picture picture = makeFlat(64, 8, white);
    for (int y = 0; y < 8; ++y) {
        picture.at(63, y) = black;
    }
    const Picture alone = makeMipChain(picture, {}).at(1);
    const Picture tiled = makeMipChain(picture, {.across = true, .down = false}).at(1);
    EXPECT_EQ(alone.at(0, 0), white) << "the black column lies at the far edge";
    EXPECT_LT(tiled.at(0, 0).red, 255) << "the black column lies just beyond the near edge";
    EXPECT_EQ(tiled.at(8, 0), white);
}

TEST(MipChain, WrapsOnlyInTheDirectionsThatTile) {
    Picture picture = makeFlat(8, 64, white);
    for (int x = 0; x < 8; ++x) {
        picture.at(x, 63) = black;
    }
    EXPECT_EQ(makeMipChain(picture, {.across = true, .down = false}).at(1).at(0, 0), white);
    EXPECT_LT(makeMipChain(picture, {.across = false, .down = true}).at(1).at(0, 0).red, 255);
}

TEST(MipChain, MovesWithATile) {
    // A tile that is turned round by a whole number of smaller texels gives the same smaller tile, turned
    // round.
    Picture picture = makeSky(64, 32);
    Picture turned(64, 32);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            turned.at((x + 24) % 64, y) = picture.at(x, y);
        }
    }
    const Picture one = makeMipChain(picture, {.across = true, .down = false}).at(2);
    const Picture other = makeMipChain(turned, {.across = true, .down = false}).at(2);
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            EXPECT_EQ(other.at((x + 6) % one.width, y), one.at(x, y)) << x << ", " << y;
        }
    }
}

} // namespace dunkman
