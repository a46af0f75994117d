#include "workshop/art/texture/dxt1_encoder.h"

#include "tests/workshop/art/cartoon.h"
#include "tests/workshop/art/range_fit.h"
#include "workshop/art/texture/dxt1_picture.h"
#include "workshop/art/texture/measure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace dunkman {

namespace {

constexpr Rgba hole = {0, 0, 0, 0};
constexpr Rgba ink = {43, 27, 61, 255};
constexpr Rgba sand = {255, 227, 179, 255};

BlockTexels flatBlock(Rgba colour) {
    BlockTexels block;
    block.texels.fill(colour);
    return block;
}

bool hasHoleKind(const Dxt1Block& block) { return block.firstColour <= block.secondColour; }

int largestDifference(const Rgba& one, const Rgba& other) {
    return std::max(
        {std::abs(one.red - other.red), std::abs(one.green - other.green), std::abs(one.blue - other.blue)});
}

Picture throughEncoder(const Picture& picture) {
    return decodePicture(picture.width, picture.height, encodePicture(picture));
}

} // namespace

TEST(Dxt1Encoder, KeepsAFlatColourOfTheGridExactly) {
    const Rgba colour = {static_cast<std::uint8_t>(expandChannel(0, 20)),
                         static_cast<std::uint8_t>(expandChannel(1, 41)),
                         static_cast<std::uint8_t>(expandChannel(2, 3)), 255};
    const Dxt1Block block = encodeBlock(flatBlock(colour));
    EXPECT_EQ(block.firstColour, packColour({20, 41, 3}));
    EXPECT_EQ(block.secondColour, packColour({20, 41, 3}));
    for (const Rgba& texel : decodeBlock(block)) {
        EXPECT_EQ(texel, colour);
    }
}

TEST(Dxt1Encoder, MixesAFlatColourOffTheGridToWithinTwoSteps) {
    // The grid alone would miss by up to four.
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<std::uint8_t>(value);
        const Rgba colour = {byte, byte, byte, 255};
        for (const Rgba& texel : decodeBlock(encodeBlock(flatBlock(colour)))) {
            EXPECT_LE(largestDifference(texel, colour), 2) << value;
            EXPECT_EQ(texel.alpha, 255);
        }
    }
}

TEST(Dxt1Encoder, KeepsTwoColoursOfTheGridExactly) {
    const Rgba one = {255, 0, 255, 255};
    const Rgba other = {0, 255, 0, 255};
    BlockTexels block = flatBlock(one);
    for (std::size_t texel = 0; texel < 16; texel += 3) {
        block.texels[texel] = other;
    }
    EXPECT_EQ(decodeBlock(encodeBlock(block)), block.texels);
}

TEST(Dxt1Encoder, MakesATransparentBlockBlackWithoutAlpha) {
    const Dxt1Block block = encodeBlock(flatBlock({255, 120, 90, 127}));
    EXPECT_TRUE(hasHoleKind(block));
    for (const Rgba& texel : decodeBlock(block)) {
        EXPECT_EQ(texel, hole);
    }
}

TEST(Dxt1Encoder, CutsAtHalfAlphaInAMixedBlock) {
    BlockTexels block = flatBlock(ink);
    block.texels[0] = {200, 200, 200, 127};
    block.texels[5] = {43, 27, 61, 128};
    block.texels[10] = sand;
    const Dxt1Block encoded = encodeBlock(block);
    EXPECT_TRUE(hasHoleKind(encoded));
    const std::array<Rgba, 16> decoded = decodeBlock(encoded);
    EXPECT_EQ(decoded[0], hole);
    EXPECT_EQ(decoded[5].alpha, 255);
    EXPECT_LE(largestDifference(decoded[5], ink), 4);
    EXPECT_LE(largestDifference(decoded[10], sand), 4);
}

TEST(Dxt1Encoder, IgnoresTheColourOfTransparentTexels) {
    BlockTexels block = flatBlock(ink);
    block.texels[3] = {255, 0, 0, 0};
    BlockTexels other = block;
    other.texels[3] = {0, 255, 0, 0};
    EXPECT_EQ(encodeBlock(block), encodeBlock(other));
}

TEST(Dxt1Encoder, NeverUsesTheHoleInAnOpaqueBlock) {
    // Black is what a hole looks like; an opaque black texel must not become one.
    BlockTexels block = flatBlock(sand);
    block.texels[7] = {0, 0, 0, 255};
    for (const Rgba& texel : decodeBlock(encodeBlock(block))) {
        EXPECT_EQ(texel.alpha, 255);
    }
}

TEST(Dxt1Encoder, TakesFourColoursForARampOfFour) {
    BlockTexels block;
    for (std::size_t texel = 0; texel < 16; ++texel) {
        const auto value = static_cast<std::uint8_t>(85 * (texel % 4));
        block.texels[texel] = {value, value, value, 255};
    }
    const Dxt1Block encoded = encodeBlock(block);
    EXPECT_FALSE(hasHoleKind(encoded));
    EXPECT_EQ(decodeBlock(encoded), block.texels);
}

TEST(Dxt1Encoder, TakesThreeColoursForARampOfThree) {
    BlockTexels block;
    for (std::size_t texel = 0; texel < 16; ++texel) {
        const auto value = static_cast<std::uint8_t>(texel % 3 == 0 ? 0 : texel % 3 == 1 ? 127 : 255);
        block.texels[texel] = {value, value, value, 255};
    }
    const Dxt1Block encoded = encodeBlock(block);
    EXPECT_TRUE(hasHoleKind(encoded));
    EXPECT_EQ(decodeBlock(encoded), block.texels);
}

TEST(Dxt1Encoder, IgnoresTexelsOutsideThePicture) {
    BlockTexels block = flatBlock({255, 255, 255, 255});
    block.inside = 0x0033;
    for (const std::size_t texel : {std::size_t{0}, std::size_t{1}, std::size_t{4}, std::size_t{5}}) {
        block.texels[texel] = {0, 0, 0, 255};
    }
    const std::array<Rgba, 16> decoded = decodeBlock(encodeBlock(block));
    for (const std::size_t texel : {std::size_t{0}, std::size_t{1}, std::size_t{4}, std::size_t{5}}) {
        EXPECT_EQ(decoded[texel], (Rgba{0, 0, 0, 255}));
    }
}

TEST(Dxt1Encoder, KeepsEveryCutOfACartoon) {
    const Picture cartoon = makeCartoon(160, 224);
    const PictureDifference difference = compare(cartoon, throughEncoder(cartoon));
    EXPECT_GT(difference.bothOpaque, 10000U);
    EXPECT_EQ(difference.cutDiffers, 0U);
}

TEST(Dxt1Encoder, ReachesItsQualityOnACartoon) {
    const Picture cartoon = makeCartoon(160, 224);
    EXPECT_GE(compare(cartoon, throughEncoder(cartoon)).psnr(), 40.1);
}

TEST(Dxt1Encoder, ReachesItsQualityOnASky) {
    const Picture sky = makeSky(256, 128);
    EXPECT_GE(compare(sky, throughEncoder(sky)).psnr(), 46.4);
}

TEST(Dxt1Encoder, BeatsARangeFitInEveryBlock) {
    for (const Picture& picture : {makeCartoon(160, 224), makeSky(256, 128)}) {
        const Picture ours = throughEncoder(picture);
        const Picture plain = throughRangeFit(picture);
        EXPECT_GT(compare(picture, ours).psnr(), compare(picture, plain).psnr() + 1.0);
        for (int top = 0; top < picture.height; top += 4) {
            for (int left = 0; left < picture.width; left += 4) {
                const auto cut = [&](const Picture& from) {
                    Picture block(4, 4);
                    for (int texel = 0; texel < 16; ++texel) {
                        block.at(texel % 4, texel / 4) = from.at(left + texel % 4, top + texel / 4);
                    }
                    return block;
                };
                EXPECT_LE(compare(cut(picture), cut(ours)).squaredSum,
                          compare(cut(picture), cut(plain)).squaredSum)
                    << left << ", " << top;
            }
        }
    }
}

} // namespace dunkman
