#include "render/dds.h"

#include <gmock/gmock.h>

#include "base/fatal.h"
#include "tests/render/dds_bytes.h"

namespace dunkman {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

std::string failureOf(const std::string& bytes) {
    try {
        parseDds(Bytes(bytes), "picture.dds");
    } catch (const FatalError& error) {
        return error.what();
    }
    return "no failure";
}

std::string failureOf(const DdsBytes& file) { return failureOf(file.build()); }

DdsImage parse(const DdsBytes& file) { return parseDds(Bytes(file.build()), "picture.dds"); }

TEST(Dds, ReadsSizeLevelsAndPixels) {
    const DdsImage image = parse({.width = 8, .height = 4, .mipMapCount = 4});
    EXPECT_EQ(image.header.width, 8u);
    EXPECT_EQ(image.header.height, 4u);
    EXPECT_EQ(image.header.mipMapCount, 4u);
    EXPECT_EQ(image.pixels().size(), 16u + 8 + 8 + 8);
}

TEST(Dds, ListsUploadsFromTheLargestLevelDown) {
    const DdsImage image = parse({.width = 12, .height = 5, .mipMapCount = 4});
    EXPECT_THAT(ddsUploads(image.header), ElementsAre(DdsUpload{0, 12, 5, 48, 0}, DdsUpload{1, 6, 2, 16, 48},
                                                      DdsUpload{2, 3, 1, 8, 64}, DdsUpload{3, 1, 1, 8, 72}));
}

TEST(Dds, NeedsAWholeBlockForAnyLevel) {
    EXPECT_THAT(ddsUploads(parse({.width = 4, .height = 4}).header), ElementsAre(DdsUpload{0, 4, 4, 8, 0}));
    EXPECT_THAT(ddsUploads(parse({.width = 1, .height = 1}).header), ElementsAre(DdsUpload{0, 1, 1, 8, 0}));
}

TEST(Dds, HasNoMoreStorageThanHalvingAllows) {
    const DdsImage image = parse({.width = 256, .height = 64, .mipMapCount = 20});
    EXPECT_EQ(ddsStorageLevels(image.header), 9u);
    // The file's other levels are uploaded all the same.
    EXPECT_EQ(ddsUploads(image.header).size(), 20u);
}

TEST(Dds, HasNoMoreStorageThanTheMipCountSays) {
    EXPECT_EQ(ddsStorageLevels(parse({.width = 256, .height = 64, .mipMapCount = 3}).header), 3u);
}

TEST(Dds, CountsStorageLevelsFromTheLowByteOfTheMipCount) {
    EXPECT_EQ(ddsStorageLevels(parse({.width = 256, .height = 64, .mipMapCount = 0x102}).header), 2u);
    EXPECT_THAT(failureOf(DdsBytes{.mipMapCount = 0x100}), HasSubstr("mip map count of 256"));
}

TEST(Dds, TakesPixelsOfAnyFormatForDxt1) {
    EXPECT_EQ(parse({.fourCc = 0x35545844}).pixels().size(), 8u); // "DXT5"
}

TEST(Dds, SkipsTheExtendedHeader) {
    const DdsImage image = parse({.fourCc = ddsFourCcDx10});
    EXPECT_THAT(image.extension, ElementsAre(71, 3, 0, 1, 0));
    EXPECT_THAT(image.pixels(), ElementsAre(std::byte{1}, std::byte{1}, std::byte{1}, std::byte{1},
                                            std::byte{1}, std::byte{1}, std::byte{1}, std::byte{1}));
}

TEST(Dds, KeepsBytesBehindTheLastLevel) {
    std::string bytes = DdsBytes().build();
    bytes.push_back('*');
    EXPECT_EQ(parseDds(Bytes(bytes), "").pixels().size(), 9u);
}

TEST(Dds, StopsAtAMissingFile) {
    try {
        readDds("tests/render/no_such.dds");
        FAIL();
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(),
                    AllOf(HasSubstr("tests/render/no_such.dds"), HasSubstr("cannot be opened")));
    }
}

TEST(Dds, StopsAtMoreLevelsThanAnyPictureCanUse) {
    EXPECT_EQ(parse({.width = 4, .height = 4, .mipMapCount = maxDdsLevels}).header.mipMapCount, maxDdsLevels);
    EXPECT_THAT(failureOf(DdsBytes{.width = 4, .height = 4, .mipMapCount = maxDdsLevels + 1}),
                AllOf(HasSubstr("\"picture.dds\""), HasSubstr("1001")));
}

TEST(Dds, StopsAtAFolder) { EXPECT_THROW(readDds("tests/render"), FatalError); }

TEST(Dds, StopsAtAnotherMagic) {
    std::string bytes = DdsBytes().build();
    bytes[3] = 'S';
    EXPECT_THAT(failureOf(bytes), AllOf(HasSubstr("\"picture.dds\""), HasSubstr("no DDS file")));
    EXPECT_THAT(failureOf(std::string()), HasSubstr("no DDS file"));
}

TEST(Dds, StopsAtEveryTruncation) {
    for (const std::uint32_t fourCc : {0x31545844u, ddsFourCcDx10}) {
        const std::string bytes =
            DdsBytes{.width = 8, .height = 8, .mipMapCount = 4, .fourCc = fourCc}.build();
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            EXPECT_THAT(failureOf(bytes.substr(0, length)), HasSubstr("\"picture.dds\"")) << length;
        }
    }
}

TEST(Dds, NamesTheLevelThatIsCutOff) {
    std::string bytes = DdsBytes{.width = 8, .height = 8, .mipMapCount = 4}.build();
    bytes.pop_back();
    EXPECT_THAT(failureOf(bytes), HasSubstr("level 3 of 4"));
}

TEST(Dds, StopsAtAMipCountOfZero) {
    EXPECT_THAT(failureOf(DdsBytes{.mipMapCount = 0}), HasSubstr("mip map count of 0"));
}

TEST(Dds, StopsAtSizesThatNoTextureHas) {
    std::string bytes = DdsBytes().build();
    bytes[16] = 0; // width 0
    EXPECT_THAT(failureOf(bytes), HasSubstr("0 by 4"));
    bytes[16] = 4;
    bytes[15] = '\xff'; // height above four billion minus sixteen million
    EXPECT_THAT(failureOf(bytes), HasSubstr("4 by 4278190084"));
}

TEST(Dds, StopsAtAMipCountThatTheFileCannotHold) {
    std::string bytes = DdsBytes().build();
    for (std::size_t byte = 28; byte < 32; ++byte) {
        bytes[byte] = '\xff';
    }
    EXPECT_THAT(failureOf(bytes), HasSubstr("level 1 of 4294967295"));
}

} // namespace
} // namespace dunkman
