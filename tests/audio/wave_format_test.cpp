#include "audio/wave_format.h"

#include <array>
#include <bit>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

using Bytes = std::array<std::uint8_t, 40>;

TEST(WaveFormat, StreamIsFloatStereoByteForByte) {
    EXPECT_EQ(
        std::bit_cast<Bytes>(streamFormat),
        (Bytes{0xFE, 0xFF, 2, 0, 0x80, 0xBB, 0, 0, 0, 0xDC, 0x05, 0,    8, 0, 32,   0, 22,   0,    32,  0, 3,
               0,    0,    0, 3, 0,    0,    0, 0, 0, 0x10, 0,    0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}));
}

TEST(WaveFormat, DecodedIsSixteenBitMonoByteForByte) {
    EXPECT_EQ(
        std::bit_cast<Bytes>(decodedFormat),
        (Bytes{0xFE, 0xFF, 1, 0, 0x80, 0xBB, 0, 0, 0, 0x77, 0x01, 0,    2, 0, 16,   0, 22,   0,    16,  0, 4,
               0,    0,    0, 1, 0,    0,    0, 0, 0, 0x10, 0,    0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}));
}

} // namespace
} // namespace dunkman
