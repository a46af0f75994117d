#include "audio/mp3_file.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

std::vector<std::byte> fileBytes(const std::string& name) {
    std::ifstream stream("tests/audio/data/" + name, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << name;
    std::vector<std::byte> bytes;
    for (std::istreambuf_iterator<char> at(stream), end; at != end; ++at) {
        bytes.push_back(static_cast<std::byte>(*at));
    }
    return bytes;
}

std::vector<std::byte> textBytes(std::string_view text) {
    std::vector<std::byte> bytes;
    for (const char character : text) {
        bytes.push_back(static_cast<std::byte>(character));
    }
    return bytes;
}

void append(std::vector<std::byte>& bytes, const std::vector<std::byte>& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

class GoodMp3 : public ::testing::TestWithParam<const char*> {};

TEST_P(GoodMp3, HasNoFault) { EXPECT_EQ(examineMp3(fileBytes(GetParam())), Mp3Fault::None); }

INSTANTIATE_TEST_SUITE_P(Files, GoodMp3,
                         ::testing::Values("mono_48000.mp3", "stereo_44100.mp3", "mono_22050_vbr.mp3",
                                           "stereo_32000_tagged.mp3", "mono_8000_plain.mp3"));

TEST(Mp3File, IsCutOffWhereverAFrameIsMissingItsEnd) {
    const std::vector<std::byte> whole = fileBytes("mono_48000.mp3");
    for (std::size_t size = whole.size() - 1; size > 500; size -= 97) {
        const std::vector<std::byte> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(examineMp3(part), Mp3Fault::CutOff) << size << " of " << whole.size();
    }
}

TEST(Mp3File, IsCutOffBetweenFramesWhenItsHeaderCountsMore) {
    // Constant rate, no padding at 48 kHz: frames of one length. Six frames cut off leave a clean end.
    const std::vector<std::byte> whole = fileBytes("mono_48000.mp3");
    const std::size_t frame = 192;
    const std::vector<std::byte> part(whole.begin(), whole.end() - static_cast<std::ptrdiff_t>(6 * frame));
    EXPECT_EQ(examineMp3(part), Mp3Fault::CutOff);
}

TEST(Mp3File, IsCutOffInsideAFrontTag) {
    const std::vector<std::byte> whole = fileBytes("stereo_32000_tagged.mp3");
    ASSERT_EQ(whole[0], std::byte{'I'});
    const std::vector<std::byte> part(whole.begin(), whole.begin() + 20);
    EXPECT_EQ(examineMp3(part), Mp3Fault::CutOff);
}

TEST(Mp3File, MayHaveATagBehind) {
    std::vector<std::byte> bytes = fileBytes("mono_48000.mp3");
    std::vector<std::byte> tag = textBytes("TAG");
    tag.resize(128);
    append(bytes, tag);
    EXPECT_EQ(examineMp3(bytes), Mp3Fault::None);
}

TEST(Mp3File, MayHaveZerosInFrontAndBehind) {
    std::vector<std::byte> bytes(1000);
    append(bytes, fileBytes("mono_48000.mp3"));
    bytes.resize(bytes.size() + 1000);
    EXPECT_EQ(examineMp3(bytes), Mp3Fault::None);
}

TEST(Mp3File, TellsEmptyFromNoMp3) {
    EXPECT_EQ(examineMp3({}), Mp3Fault::Empty);
    EXPECT_EQ(examineMp3(textBytes("{ not: 'music' }")), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(textBytes("ID3")), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(textBytes("\xFF")), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(std::vector<std::byte>(100000)), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(std::vector<std::byte>(100000, std::byte{0xFF})), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(fileBytes("not_music.mp3")), Mp3Fault::NotMp3);
    EXPECT_EQ(examineMp3(fileBytes("empty.mp3")), Mp3Fault::Empty);
}

TEST(Mp3File, SurvivesAnyDamage) {
    const std::vector<std::byte> whole = fileBytes("stereo_32000_tagged.mp3");
    std::uint32_t random = 1;
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::byte> bytes = whole;
        for (int change = 0; change < 20; ++change) {
            random = random * 1664525u + 1013904223u;
            // Mostly in front, where tag, header and counts are.
            const std::size_t range = change < 15 ? 200 : bytes.size();
            bytes[random / 256 % range] = static_cast<std::byte>(random >> 24);
        }
        random = random * 1664525u + 1013904223u;
        bytes.resize(random / 256 % (bytes.size() + 1));
        const Mp3Fault fault = examineMp3(bytes);
        EXPECT_EQ(fault == Mp3Fault::Empty, bytes.empty());
    }
}

TEST(Mp3File, DescribesEachFault) {
    EXPECT_STREQ(describe(Mp3Fault::Empty), "is empty");
    EXPECT_STREQ(describe(Mp3Fault::NotMp3), "is no MP3 file");
    EXPECT_STREQ(describe(Mp3Fault::CutOff), "is cut off");
    EXPECT_STREQ(describe(Mp3Fault::None), "");
}

} // namespace
} // namespace dunkman
