#include "workshop/art/texture/dds_file.h"

#include "tests/workshop/art/cartoon.h"
#include "workshop/art/texture/dxt1_picture.h"
#include "workshop/art/texture/texture_build.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>

namespace dunkman {

namespace {

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(bytes.at(offset)) |
           static_cast<std::uint32_t>(bytes.at(offset + 1)) << 8 |
           static_cast<std::uint32_t>(bytes.at(offset + 2)) << 16 |
           static_cast<std::uint32_t>(bytes.at(offset + 3)) << 24;
}

std::uint64_t checksum(const std::vector<std::uint8_t>& bytes) {
    std::uint64_t hash = 14695981039346656037U;
    for (const std::uint8_t byte : bytes) {
        hash = (hash ^ byte) * 1099511628211U;
    }
    return hash;
}

DdsTexture smallTexture() { return buildTexture(makeFlat(20, 12, {255, 0, 0, 255}), {}); }

} // namespace

TEST(DdsFile, WritesTheStandardHeader) {
    const std::vector<std::uint8_t> bytes = ddsBytes(smallTexture());
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 4), "DDS ");
    EXPECT_EQ(wordAt(bytes, 4), 124U);
    EXPECT_EQ(wordAt(bytes, 8), 0x000A1007U) << "caps, height, width, pixel format, mip count, linear size";
    EXPECT_EQ(wordAt(bytes, 12), 12U) << "height";
    EXPECT_EQ(wordAt(bytes, 16), 20U) << "width";
    EXPECT_EQ(wordAt(bytes, 20), 5U * 3U * 8U) << "bytes of level 0";
    EXPECT_EQ(wordAt(bytes, 24), 0U) << "depth";
    EXPECT_EQ(wordAt(bytes, 28), 5U) << "mip count";
    EXPECT_EQ(wordAt(bytes, 76), 32U) << "size of the pixel format";
    EXPECT_EQ(wordAt(bytes, 80), 4U) << "has a FourCC";
    EXPECT_EQ(std::string(bytes.begin() + 84, bytes.begin() + 88), "DXT1");
    EXPECT_EQ(wordAt(bytes, 108), 0x00401008U) << "texture, complex, mip map";
    for (std::size_t reserved = 32; reserved < 76; ++reserved) {
        EXPECT_EQ(bytes[reserved], 0) << "neither date nor name of the tool";
    }
}

TEST(DdsFile, HoldsEveryLevelAndNothingElse) {
    // 20 by 12, 10 by 6, 5 by 3, 2 by 1 and 1 by 1, in whole blocks.
    EXPECT_EQ(ddsBytes(smallTexture()).size(), 128U + 8U * (5U * 3U + 3U * 2U + 2U * 1U + 1U + 1U));
}

TEST(DdsFile, ReadsBackWhatItWrote) {
    const DdsTexture texture = buildTexture(makeCartoon(65, 43), {});
    const DdsTexture again = parseDdsTexture(ddsBytes(texture), "test");
    EXPECT_EQ(again.width, 65);
    EXPECT_EQ(again.height, 43);
    EXPECT_EQ(again.levels, texture.levels);
}

TEST(DdsFile, RefusesWhatIsNoDdsFile) {
    std::vector<std::uint8_t> bytes = ddsBytes(smallTexture());
    bytes[0] = 'X';
    EXPECT_THROW(parseDdsTexture(bytes, "test"), std::runtime_error);
    EXPECT_THROW(parseDdsTexture({}, "test"), std::runtime_error);
}

TEST(DdsFile, RefusesAnotherFourCc) {
    std::vector<std::uint8_t> bytes = ddsBytes(smallTexture());
    bytes[87] = '5';
    EXPECT_THROW(parseDdsTexture(bytes, "test"), std::runtime_error);
}

TEST(DdsFile, RefusesAFileThatEndsEarly) {
    std::vector<std::uint8_t> bytes = ddsBytes(smallTexture());
    bytes.pop_back();
    EXPECT_THROW(parseDdsTexture(bytes, "test"), std::runtime_error);
}

TEST(TextureBuild, GivesTheSameBytesEveryTime) {
    const Picture cartoon = makeCartoon(97, 131);
    EXPECT_EQ(ddsBytes(buildTexture(cartoon, {})), ddsBytes(buildTexture(cartoon, {})));
}

TEST(TextureBuild, GivesTheBytesOfThisEncoderVersion) {
    // When this changes, raise ENCODER_VERSION in workshop/art/drawings.py and build all textures again.
    const DdsTexture cartoon = buildTexture(makeCartoon(97, 131), {});
    const DdsTexture sky = buildTexture(makeSky(64, 48), {.across = true, .down = false});
    EXPECT_EQ(checksum(ddsBytes(cartoon)), 7205865964845826787U);
    EXPECT_EQ(checksum(ddsBytes(sky)), 9945964011938706937U);
}

TEST(TextureBuild, EncodesOddSizesToTheLastTexel) {
    const Picture cartoon = makeCartoon(149, 101);
    const DdsTexture texture = buildTexture(cartoon, {});
    const Picture decoded = decodeLevel(texture, 0);
    ASSERT_EQ(decoded.width, 149);
    ASSERT_EQ(decoded.height, 101);
    for (int level = 0; level < static_cast<int>(texture.levels.size()); ++level) {
        const Picture shown = decodeLevel(texture, level);
        EXPECT_EQ(texture.levels[static_cast<std::size_t>(level)].size(),
                  dxt1Bytes(shown.width, shown.height));
    }
    // The last column and row belong to blocks that reach over the edge.
    Picture flat = makeFlat(149, 101, {0, 0, 0, 255});
    flat.at(148, 100) = {255, 255, 255, 255};
    EXPECT_EQ(decodeLevel(buildTexture(flat, {}), 0).at(148, 100), (Rgba{255, 255, 255, 255}));
}

} // namespace dunkman
