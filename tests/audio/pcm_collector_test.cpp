#include "audio/pcm_collector.h"

#include <array>
#include <bit>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

void append(PcmCollector& collector, std::span<const std::int16_t> samples) {
    collector.append(std::as_bytes(samples));
}

TEST(PcmCollector, TakesTheWantedFormatAsItIs) {
    PcmCollector collector;
    collector.setFormat(1, 48000);
    append(collector, std::array<std::int16_t, 3>{1, -2, 32767});
    append(collector, std::array<std::int16_t, 1>{-32768});
    EXPECT_EQ(collector.take(), (std::vector<std::int16_t>{1, -2, 32767, -32768}));
    EXPECT_TRUE(collector.take().empty());
}

TEST(PcmCollector, TakesPiecesOfAnySize) {
    PcmCollector collector;
    collector.setFormat(2, 48000);
    std::vector<std::int16_t> expected;
    std::vector<std::byte> bytes;
    for (std::int16_t index = 0; index < 30000; ++index) {
        const auto frame = std::bit_cast<std::array<std::byte, 4>>(std::array<std::int16_t, 2>{index, index});
        bytes.insert(bytes.end(), frame.begin(), frame.end());
        expected.push_back(index);
    }
    // Also pieces that end in the middle of a sample, and one of far more than 64 KiB.
    const std::span<const std::byte> all(bytes);
    collector.append(all.subspan(0, 1));
    collector.append(all.subspan(1, 0));
    collector.append(all.subspan(1, 2));
    collector.append(all.subspan(3));
    EXPECT_EQ(collector.take(), expected);
}

TEST(PcmCollector, MixesDownAndResamples) {
    PcmCollector collector;
    collector.setFormat(2, 24000);
    std::vector<std::int16_t> samples;
    for (int frame = 0; frame < 1000; ++frame) {
        samples.push_back(8000);
        samples.push_back(4000);
    }
    append(collector, samples);
    const std::vector<std::int16_t> result = collector.take();
    ASSERT_EQ(result.size(), 2000u);
    EXPECT_EQ(result[1000], 6000);
    EXPECT_EQ(result[1001], 6000);
}

TEST(PcmCollector, FollowsAChangeOfFormatOnTheWay) {
    PcmCollector collector;
    collector.setFormat(1, 48000);
    append(collector, std::array<std::int16_t, 2>{1, 2});
    collector.setFormat(2, 48000);
    append(collector, std::array<std::int16_t, 4>{10, 20, 30, 40});
    EXPECT_EQ(collector.take(), (std::vector<std::int16_t>{1, 2, 15, 35}));
}

TEST(PcmCollector, GivesNothingForNothing) {
    PcmCollector collector;
    collector.setFormat(2, 44100);
    EXPECT_TRUE(collector.take().empty());
}

} // namespace
} // namespace dunkman
