#include "render/texture_coverage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>

#include "render/dds.h"

namespace dunkman {
namespace {

// An image of DXT1 blocks, every level a quarter of the one before. `isSeen` tells of each texel of a level, by column
// and row from the top, whether it is opaque.
using IsSeen = std::function<bool(std::uint32_t level, std::uint32_t x, std::uint32_t y)>;

DdsImage imageOf(std::uint32_t width, std::uint32_t height, std::uint32_t levels, const IsSeen& isSeen) {
    DdsImage image;
    image.header.width = width;
    image.header.height = height;
    image.header.mipMapCount = levels;
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        for (std::uint32_t y = 0; y < upload.height; y += 4) {
            for (std::uint32_t x = 0; x < upload.width; x += 4) {
                std::uint32_t indices = 0; // 3 is transparent where the first colour is not above the second
                for (std::uint32_t texel = 0; texel < 16; ++texel) {
                    const bool seen = isSeen(upload.level, x + texel % 4, y + texel / 4);
                    indices |= (seen ? 0u : 3u) << (2 * texel);
                }
                image.bytes.resize(image.bytes.size() + 4); // both colours black
                for (unsigned int shift = 0; shift < 32; shift += 8) {
                    image.bytes.push_back(static_cast<char>(indices >> shift & 0xFFu));
                }
            }
        }
    }
    return image;
}

TEST(TextureCoverage, KnowsNothingBeforeALoad) {
    EXPECT_EQ(TextureCoverage(), (TextureCoverage{0, 0, 0, 0}));
}

TEST(TextureCoverage, LeavesATexelAroundWhatIsSeen) {
    const DdsImage image = imageOf(16, 8, 1, [](auto, auto x, auto y) { return x >= 6 && x < 9 && y == 3; });
    const TextureCoverage coverage = coverageOf(image).at(0);
    EXPECT_EQ(coverage.left, 5);
    EXPECT_EQ(coverage.right, 16 - 10);
    EXPECT_EQ(coverage.top, 2);
    EXPECT_EQ(coverage.bottom, 8 - 5);
}

TEST(TextureCoverage, FindsNoBorderWhereTheEdgeIsSeen) {
    const DdsImage image = imageOf(8, 8, 1, [](auto, auto x, auto y) { return x == y; });
    EXPECT_EQ(coverageOf(image).at(0), TextureCoverage());
}

TEST(TextureCoverage, OfAnEmptyPictureIsUnknown) {
    const DdsImage image = imageOf(8, 8, 1, [](auto, auto, auto) { return false; });
    EXPECT_EQ(coverageOf(image).at(0), TextureCoverage());
}

TEST(TextureCoverage, TakesNoTexelsBeyondThePictureForSeenOnes) {
    // A picture of 6 by 5 has blocks of 8 by 8; what they hold outside is nobody's business.
    const DdsImage image = imageOf(6, 5, 1, [](auto, auto x, auto y) { return x < 2 || x >= 6 || y >= 5; });
    const TextureCoverage coverage = coverageOf(image).at(0);
    EXPECT_EQ(coverage.right, 3);
    EXPECT_EQ(coverage.bottom, 0);
}

TEST(TextureCoverage, TakesOpaqueColoursForSeenWhateverTheirIndices) {
    DdsImage image = imageOf(8, 4, 1, [](auto, auto, auto) { return false; });
    image.bytes[0] = 1; // the first colour above the second: four colours, none of them transparent
    EXPECT_EQ(coverageOf(image).at(0), (TextureCoverage{.right = 3}));
}

// Each row has its right edge elsewhere, behind a hole.
TEST(TextureCoverage, FindsTheRightEdgeInWhicheverRowItIs) {
    for (std::uint32_t farthest = 0; farthest < 20; ++farthest) {
        const DdsImage image = imageOf(80, 20, 1, [farthest](auto, auto x, auto y) {
            return (x >= 8 && x < 16) || x == (y == farthest ? 71u : 40 + y);
        });
        const TextureCoverage coverage = coverageOf(image).at(0);
        EXPECT_EQ(coverage.left, 7) << farthest;
        EXPECT_EQ(coverage.right, 80 - 73) << farthest;
    }
}

TEST(TextureCoverage, FindsTheFirstAndTheLastRowThatHasATexel) {
    for (std::uint32_t row = 0; row < 12; ++row) {
        const DdsImage image =
            imageOf(32, 12, 1, [row](auto, auto x, auto y) { return y == row && x >= 12 && x < 20; });
        const TextureCoverage coverage = coverageOf(image).at(0);
        EXPECT_EQ(coverage.top, row == 0 ? 0 : row - 1) << row;
        EXPECT_EQ(coverage.bottom, row == 11 ? 0 : 12 - (row + 2)) << row;
    }
}

TEST(TextureCoverage, OfCoarserLevelsTakesInTheFinerOnes) {
    // Only the second level has something at the right, where a texel is two of the full size.
    const DdsImage image = imageOf(
        32, 32, 2, [](auto level, auto x, auto y) { return y == 8 && (level == 0 ? x == 8 : x == 12); });
    const CoverageByLevel coverage = coverageOf(image);
    EXPECT_EQ(coverage[0].left, 7);
    EXPECT_EQ(coverage[0].right, 32 - 10);
    EXPECT_EQ(coverage[1].left, 7);
    EXPECT_EQ(coverage[1].right, 32 - 28);
    EXPECT_EQ(coverage[3], coverage[1]) << "there is no coarser level to sample";
}

} // namespace
} // namespace dunkman
