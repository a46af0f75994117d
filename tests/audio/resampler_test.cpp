#include "audio/resampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

std::vector<std::int16_t> sine(double hertz, std::uint32_t rate, std::size_t count, double amplitude) {
    std::vector<std::int16_t> samples(count);
    for (std::size_t index = 0; index < count; ++index) {
        const double seconds = static_cast<double>(index) / rate;
        samples[index] = static_cast<std::int16_t>(
            std::lrint(amplitude * std::sin(2 * std::numbers::pi * hertz * seconds)));
    }
    return samples;
}

// Largest difference, away from the two ends, where the filter sees the silence beside the piece.
int largestError(const std::vector<std::int16_t>& left, const std::vector<std::int16_t>& right) {
    EXPECT_EQ(left.size(), right.size());
    int worst = 0;
    for (std::size_t index = 400; index + 400 < left.size(); ++index) {
        worst = std::max(worst, std::abs(left[index] - right[index]));
    }
    return worst;
}

int loudest(const std::vector<std::int16_t>& samples) {
    int worst = 0;
    for (std::size_t index = 400; index + 400 < samples.size(); ++index) {
        worst = std::max(worst, std::abs(static_cast<int>(samples[index])));
    }
    return worst;
}

TEST(Downmix, LeavesMonoAlone) {
    const std::vector<std::int16_t> samples = {1, -2, 32767, -32768};
    EXPECT_EQ(downmix(samples, 1), samples);
}

TEST(Downmix, AveragesToTheNearestAwayFromZero) {
    const std::vector<std::int16_t> samples = {100, 200, -100, -200, 1, 2, -1, -2, 5, -5};
    EXPECT_EQ(downmix(samples, 2), (std::vector<std::int16_t>{150, -150, 2, -2, 0}));
}

TEST(Downmix, KeepsFullScale) {
    const std::vector<std::int16_t> samples = {32767, 32767, -32768, -32768, 32767, -32768};
    EXPECT_EQ(downmix(samples, 2), (std::vector<std::int16_t>{32767, -32768, -1}));
}

TEST(Downmix, DropsAFrameThatIsNotComplete) {
    const std::vector<std::int16_t> samples = {10, 20, 30};
    EXPECT_EQ(downmix(samples, 2), (std::vector<std::int16_t>{15}));
    EXPECT_EQ(downmix(samples, 6), (std::vector<std::int16_t>{}));
}

TEST(Resample, ChangesNothingAtEqualRates) {
    const std::vector<std::int16_t> samples = sine(1000, 48000, 1000, 30000);
    EXPECT_EQ(resample(samples, 48000, 48000), samples);
}

TEST(Resample, KeepsTheDuration) {
    EXPECT_EQ(resample(std::vector<std::int16_t>(44100), 44100, 48000).size(), 48000u);
    EXPECT_EQ(resample(std::vector<std::int16_t>(44101), 44100, 48000).size(), 48001u);
    EXPECT_EQ(resample(std::vector<std::int16_t>(1), 8000, 48000).size(), 6u);
    EXPECT_TRUE(resample({}, 44100, 48000).empty());
}

TEST(Resample, KeepsAConstant) {
    const std::vector<std::int16_t> result = resample(std::vector<std::int16_t>(4410, 12345), 44100, 48000);
    EXPECT_EQ(largestError(result, std::vector<std::int16_t>(4800, 12345)), 0);
}

class ResampleRate : public ::testing::TestWithParam<std::uint32_t> {};

// Pitch, level, time and purity at once: the result is the same sine sampled at the other rate, and nothing
// else.
TEST_P(ResampleRate, GivesTheSameSineWithoutDelay) {
    const std::uint32_t rate = GetParam();
    for (const double share :
         {0.01, 0.1, 0.25, 0.4, 0.45}) { // of the file's rate; half of it is the band's end
        const double hertz = share * std::min(rate, 48000u);
        const std::vector<std::int16_t> result = resample(sine(hertz, rate, rate, 20000), rate, 48000);
        const std::vector<std::int16_t> expected = sine(hertz, 48000, 48000, 20000);
        EXPECT_LE(largestError(result, expected), 8) << hertz << " Hz"; // 68 dB below; rounding alone makes 1
    }
}

INSTANTIATE_TEST_SUITE_P(Mp3Rates, ResampleRate,
                         ::testing::Values(8000u, 11025u, 12000u, 16000u, 22050u, 24000u, 32000u, 44100u,
                                           96000u));

TEST(Resample, FoldsNothingBackWhenTheTargetIsSlower) {
    EXPECT_LE(loudest(resample(sine(30000, 96000, 96000, 30000), 96000, 48000)), 3);
    EXPECT_LE(loudest(resample(sine(26000, 96000, 96000, 30000), 96000, 48000)), 3);
}

TEST(Resample, ClampsWhatOvershoots) {
    std::vector<std::int16_t> square(4410);
    for (std::size_t index = 0; index < square.size(); ++index) {
        square[index] = index / 20 % 2 == 0 ? 32767 : -32768;
    }
    const std::vector<std::int16_t> result = resample(square, 44100, 48000);
    // Without the clamp an overshoot would turn over to the other sign in the middle of a half wave.
    for (std::size_t index = 400; index + 400 < result.size(); ++index) {
        const std::size_t inHalfWave = index * 147 % (160 * 20);
        if (inHalfWave > 160 * 3 && inHalfWave < 160 * 17) {
            ASSERT_EQ(result[index] > 0, index * 147 / (160 * 20) % 2 == 0) << index;
        }
    }
    EXPECT_EQ(*std::max_element(result.begin(), result.end()), 32767);
}

} // namespace
} // namespace dunkman
