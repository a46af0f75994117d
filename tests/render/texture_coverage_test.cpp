#include "render/texture_coverage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <vector>

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
    std::string blocks;
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        for (std::uint32_t y = 0; y < upload.height; y += 4) {
            for (std::uint32_t x = 0; x < upload.width; x += 4) {
                std::uint32_t indices = 0; // 3 is transparent where the first colour is not above the second
                for (std::uint32_t texel = 0; texel < 16; ++texel) {
                    const bool seen = isSeen(upload.level, x + texel % 4, y + texel / 4);
                    indices |= (seen ? 0u : 3u) << (2 * texel);
                }
                blocks.append(4, 0); // both colours black
                for (unsigned int shift = 0; shift < 32; shift += 8) {
                    blocks.push_back(static_cast<char>(indices >> shift & 0xFFu));
                }
            }
        }
    }
    image.bytes = Bytes(blocks);
    return image;
}

// Of the parts one after the other, as it is written here: left, top, right, bottom.
using Parts = std::vector<std::array<int, 4>>;

Parts partsOf(const TextureCoverage& coverage) {
    Parts parts;
    for (std::size_t part = 0; part < coverage.count; ++part) {
        const TexelRect& rect = coverage.parts.at(part);
        parts.push_back({rect.left, rect.top, rect.right, rect.bottom});
    }
    return parts;
}

Parts partsOf(const DdsImage& image, std::size_t level = 0) { return partsOf(coverageOf(image).at(level)); }

// All of them in one.
std::array<int, 4> around(const Parts& parts) {
    std::array<int, 4> box = parts.at(0);
    for (const auto& [left, top, right, bottom] : parts) {
        box = {std::min(box[0], left), std::min(box[1], top), std::max(box[2], right),
               std::max(box[3], bottom)};
    }
    return box;
}

TEST(TextureCoverage, KnowsNothingBeforeALoad) { EXPECT_EQ(TextureCoverage().count, 0); }

TEST(TextureCoverage, LeavesATexelAroundWhatIsSeen) {
    const DdsImage image = imageOf(16, 8, 1, [](auto, auto x, auto y) { return x >= 6 && x < 9 && y == 3; });
    EXPECT_EQ(around(partsOf(image)), (std::array{5, 2, 10, 5}));
}

TEST(TextureCoverage, OfAWholePictureIsUnknown) {
    EXPECT_EQ(partsOf(imageOf(8, 8, 1, [](auto...) { return true; })), Parts());
    EXPECT_EQ(partsOf(imageOf(2048, 1024, 1, [](auto...) { return true; })), Parts());
}

TEST(TextureCoverage, OfAnEmptyPictureIsUnknown) {
    EXPECT_EQ(partsOf(imageOf(8, 8, 1, [](auto...) { return false; })), Parts());
}

TEST(TextureCoverage, TakesNoTexelsBeyondThePictureForSeenOnes) {
    // A picture of 6 by 5 has blocks of 8 by 8; what they hold outside is nobody's business.
    const DdsImage image = imageOf(6, 5, 1, [](auto, auto x, auto y) { return x < 2 || x >= 6 || y >= 5; });
    EXPECT_EQ(around(partsOf(image)), (std::array{0, 0, 3, 5}));
}

TEST(TextureCoverage, TakesOpaqueColoursForSeenWhateverTheirIndices) {
    DdsImage image = imageOf(8, 4, 1, [](auto...) { return false; });
    image.bytes.data()[0] = 1; // the first colour above the second: four colours, none of them transparent
    EXPECT_EQ(partsOf(image), (Parts{{0, 0, 5, 4}}));
}

// Each row has its right edge elsewhere, behind a hole.
TEST(TextureCoverage, FindsTheRightEdgeInWhicheverRowItIs) {
    for (std::uint32_t farthest = 0; farthest < 20; ++farthest) {
        const DdsImage image = imageOf(80, 20, 1, [farthest](auto, auto x, auto y) {
            return (x >= 8 && x < 16) || x == (y == farthest ? 71u : 40 + y);
        });
        EXPECT_EQ(around(partsOf(image)), (std::array{7, 0, 73, 20})) << farthest;
    }
}

TEST(TextureCoverage, FindsTheFirstAndTheLastRowThatHasATexel) {
    for (int row = 0; row < 12; ++row) {
        const DdsImage image = imageOf(32, 12, 1, [row](auto, auto x, auto y) {
            return static_cast<int>(y) == row && x >= 12 && x < 20;
        });
        EXPECT_EQ(around(partsOf(image)), (std::array{11, std::max(row - 1, 0), 21, std::min(row + 2, 12)}));
    }
}

TEST(TextureCoverage, OfCoarserLevelsTakesInTheFinerOnes) {
    // Only the second level has something at the right, where a texel is two of the full size.
    const DdsImage image = imageOf(
        32, 32, 2, [](auto level, auto x, auto y) { return y == 8 && (level == 0 ? x == 8 : x == 12); });
    EXPECT_EQ(around(partsOf(image, 0)), (std::array{7, 7, 10, 10}));
    EXPECT_EQ(around(partsOf(image, 1)), (std::array{7, 7, 28, 20}));
    EXPECT_EQ(coverageOf(image)[3], coverageOf(image)[1]) << "there is no coarser level to sample";
}

// A palm: a wide crown on a thin trunk.
TEST(TextureCoverage, HasAPartForWhatIsWideAndOneForWhatIsThin) {
    const DdsImage image =
        imageOf(80, 80, 1, [](auto, auto x, auto y) { return y < 20 || (x >= 36 && x < 44); });
    const Parts parts = partsOf(image);
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0], (std::array{0, 0, 80, 22})) << "a texel more, and a strip has two rows";
    EXPECT_EQ(parts[1], (std::array{35, 22, 45, 80}));
}

TEST(TextureCoverage, HasNoPartForASmallGain) {
    const DdsImage image = imageOf(80, 80, 1, [](auto, auto x, auto y) { return x >= 2 || y < 8; });
    EXPECT_EQ(partsOf(image), Parts()) << "a corner that is missing";
}

TEST(TextureCoverage, LeavesOutAGapBetweenTwoThings) {
    const DdsImage image = imageOf(80, 80, 1, [](auto, auto, auto y) { return y < 20 || y >= 60; });
    EXPECT_EQ(partsOf(image), (Parts{{0, 0, 80, 21}, {0, 59, 80, 80}}));
}

TEST(TextureCoverage, HasNoMoreThanFourParts) {
    const DdsImage image = imageOf(80, 80, 1, [](auto, auto x, auto y) { return x / 8 == y / 8; });
    const Parts parts = partsOf(image);
    EXPECT_EQ(parts.size(), 4u);
    EXPECT_EQ(around(parts), (std::array{0, 0, 80, 80}));
}

// Blots of any size in pictures of any size, held against every texel that a sample may mix in.
TEST(TextureCoverage, NeverLeavesOutASampleThatMayBeSeen) {
    std::mt19937 random(1);
    const auto dice = [&random](std::uint32_t sides) { return static_cast<std::uint32_t>(random()) % sides; };
    for (int picture = 0; picture < 200; ++picture) {
        const std::uint32_t width = 1 + dice(90);
        const std::uint32_t height = 1 + dice(90);
        const std::uint32_t left = dice(width);
        const std::uint32_t top = dice(height);
        const std::uint32_t seldom = 1 + dice(300);
        std::set<std::array<std::uint32_t, 3>> seen; // level, x, y
        const DdsImage image = imageOf(width, height, 1 + dice(4), [&](auto level, auto x, auto y) {
            const bool isSeen = (dice(seldom) == 0 || (x << level) == left) && (y << level) >= top;
            if (isSeen) {
                seen.insert({level, x, y});
            }
            return isSeen;
        });
        const CoverageByLevel coverage = coverageOf(image);
        for (const auto& [level, x, y] : seen) {
            const DdsUpload upload = ddsUploads(image.header).at(level);
            if (x >= upload.width || y >= upload.height || level >= ddsStorageLevels(image.header)) {
                continue;
            }
            const TextureCoverage& known = coverage.at(level);
            // The texels of the full size that lie within a texel of this level around it.
            const double scaleX = static_cast<double>(width) / upload.width;
            const double scaleY = static_cast<double>(height) / upload.height;
            for (const double fromX : {-0.99, 0.5, 1.99}) {
                for (const double fromY : {-0.99, 0.5, 1.99}) {
                    const double sampleX = (x + fromX) * scaleX;
                    const double sampleY = (y + fromY) * scaleY;
                    if (sampleX < 0.0 || sampleY < 0.0 || sampleX > width || sampleY > height) {
                        continue;
                    }
                    const auto holds = [&](const TexelRect& part) {
                        return sampleX >= part.left && sampleX <= part.right && sampleY >= part.top &&
                               sampleY <= part.bottom;
                    };
                    EXPECT_TRUE(known.count == 0 ||
                                std::any_of(known.parts.begin(), known.parts.begin() + known.count, holds))
                        << width << " by " << height << ", level " << level << ": " << x << ", " << y;
                }
            }
        }
    }
}

} // namespace
} // namespace dunkman
