#include "audio/mixer.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

MusicTrack trackOf(std::vector<std::int16_t> samples, bool loop = false, std::uint64_t position = 0) {
    MusicTrack track;
    track.samples = std::move(samples);
    track.loop = loop;
    track.position = position;
    return track;
}

std::vector<float> mixed(const MusicTrack& track, std::uint32_t frames, float volume = 1.0f) {
    std::vector<float> destination(std::size_t{frames} * 2, 0.0f);
    mixTrack(destination.data(), frames, volume, track);
    return destination;
}

TEST(MixTrack, ScalesSixteenBitsToOne) {
    EXPECT_EQ(mixed(trackOf({-32768, 32767, 1, 0}), 4),
              (std::vector<float>{-1.0f, -1.0f, 32767.0f / 32768.0f, 32767.0f / 32768.0f, 1.0f / 32768.0f,
                                  1.0f / 32768.0f, 0.0f, 0.0f}));
}

TEST(MixTrack, GivesBothSidesTheSameSample) {
    std::vector<std::int16_t> samples;
    for (int index = 0; index < 1000; ++index) {
        samples.push_back(static_cast<std::int16_t>(index * 65 - 32500));
    }
    const std::vector<float> result = mixed(trackOf(samples), 1000);
    for (std::size_t frame = 0; frame < 1000; ++frame) {
        ASSERT_EQ(result[2 * frame], static_cast<float>(samples[frame]) / 32768.0f) << frame;
        ASSERT_EQ(result[2 * frame + 1], result[2 * frame]) << frame;
    }
}

TEST(MixTrack, AppliesTheVolumeToBothSides) {
    EXPECT_EQ(mixed(trackOf({16384, -16384}), 2, 0.25f),
              (std::vector<float>{0.125f, 0.125f, -0.125f, -0.125f}));
    EXPECT_EQ(mixed(trackOf({16384}), 1, 0.0f), (std::vector<float>{0.0f, 0.0f}));
}

TEST(MixTrack, AddsToWhatIsThere) {
    std::array<float, 4> destination = {0.5f, -0.25f, 1.0f, 2.0f};
    mixTrack(destination.data(), 2, 1.0f, trackOf({8192, 16384}));
    EXPECT_EQ(destination, (std::array<float, 4>{0.75f, 0.0f, 1.5f, 2.5f}));
}

TEST(MixTrack, StartsAtThePositionAndLeavesTheTrackAlone) {
    const MusicTrack track = trackOf({0, 8192, 16384, 24576}, false, 2);
    EXPECT_EQ(mixed(track, 2), (std::vector<float>{0.5f, 0.5f, 0.75f, 0.75f}));
    EXPECT_EQ(track.position, 2u);
}

TEST(MixTrack, WrapsALoopingTrackAsOftenAsNeeded) {
    EXPECT_EQ(mixed(trackOf({8192, 16384}, true, 1), 5),
              (std::vector<float>{0.5f, 0.5f, 0.25f, 0.25f, 0.5f, 0.5f, 0.25f, 0.25f, 0.5f, 0.5f}));
}

TEST(MixTrack, StartsALoopingTrackAtItsEndFromSampleZero) {
    EXPECT_EQ(mixed(trackOf({8192, 16384}, true, 2), 2), (std::vector<float>{0.25f, 0.25f, 0.5f, 0.5f}));
}

TEST(MixTrack, LeavesTheRestSilentBehindTheEndOfAOneShotTrack) {
    EXPECT_EQ(mixed(trackOf({8192, 16384}, false, 1), 3), (std::vector<float>{0.5f, 0.5f, 0, 0, 0, 0}));
    EXPECT_EQ(mixed(trackOf({8192, 16384}, false, 2), 2), (std::vector<float>{0, 0, 0, 0}));
    EXPECT_EQ(mixed(trackOf({8192, 16384}, false, 7), 1), (std::vector<float>{0, 0}));
}

TEST(MixTrack, TakesATrackWithoutSamplesAsSilence) {
    EXPECT_EQ(mixed(trackOf({}, true), 2), (std::vector<float>{0, 0, 0, 0}));
    EXPECT_EQ(mixed(trackOf({}, false), 2), (std::vector<float>{0, 0, 0, 0}));
}

TEST(MixTrack, WritesNothingForNoFrames) {
    float untouched = 3.0f;
    mixTrack(&untouched, 0, 1.0f, trackOf({8192}, true));
    EXPECT_EQ(untouched, 3.0f);
}

} // namespace
} // namespace dunkman
