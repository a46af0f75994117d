#include "audio/ring.h"

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace dunkman {
namespace {

constexpr std::uint32_t bytesPerFrame = AudioRing::bytesPerFrame;
constexpr std::uint32_t ringBytes = 524288;
constexpr std::uint32_t deviceFrames = 1440;

// A track whose sample tells its own number, so that every jump shows.
MusicTrack numberedTrack(std::size_t frames, bool loop = false) {
    MusicTrack track;
    for (std::size_t index = 0; index < frames; ++index) {
        track.samples.push_back(static_cast<std::int16_t>(index % 30000 + 1));
    }
    track.loop = loop;
    return track;
}

std::int32_t sampleIn(const std::byte* frame) {
    float sides[2];
    std::memcpy(sides, frame, sizeof sides);
    EXPECT_EQ(sides[0], sides[1]);
    return static_cast<std::int32_t>(sides[0] * 32768.0f);
}

class Ring : public ::testing::Test {
protected:
    void prepare(std::uint32_t startPosition = 0, std::uint32_t frames = deviceFrames) {
        ASSERT_FALSE(ring.allocate(ringBytes, startPosition).failed());
        ring.setDeviceBuffer(frames);
        start = startPosition;
    }

    // What the device hears: sample numbers, 0 for silence.
    std::vector<std::int32_t> drain(std::uint32_t frames) {
        const AudioRing::Drain taken = ring.beginDrain(frames);
        std::vector<std::int32_t> heard;
        for (std::uint32_t frame = 0; frame < taken.frames; ++frame) {
            heard.push_back(sampleIn(taken.data + frame * bytesPerFrame));
        }
        ring.endDrain(taken);
        if (taken.frames == 0) {
            heard.resize(frames, 0);
        }
        return heard;
    }

    std::int32_t mixedAt(std::uint32_t frame) const {
        return sampleIn(ring.at(start + frame * bytesPerFrame));
    }

    AudioRing ring;
    std::uint32_t start = 0;
};

std::vector<std::int32_t> numbers(std::int32_t first, std::size_t count) {
    std::vector<std::int32_t> result(count);
    for (std::size_t index = 0; index < count; ++index) {
        result[index] = first + static_cast<std::int32_t>(index);
    }
    return result;
}

TEST(RingSize, IsThePowerOfTwoThatHoldsASecond) {
    EXPECT_EQ(AudioRing::sizeFor(384000), 524288u);
    EXPECT_EQ(AudioRing::sizeFor(524288), 524288u);
    EXPECT_EQ(AudioRing::sizeFor(524289), 1048576u);
    EXPECT_EQ(AudioRing::sizeFor(8000), 65536u);
}

TEST_F(Ring, MixesAHundredMillisecondsAhead) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().writePosition, 4800u * bytesPerFrame);
    EXPECT_EQ(mixedAt(0), 1);
    EXPECT_EQ(mixedAt(4799), 4800);
    EXPECT_EQ(mixedAt(4800), 0);
    EXPECT_EQ(track.position, 0u);
}

TEST_F(Ring, ZeroesAndAdvancesWithNothingSelected) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    drain(1440);
    ring.feed(nullptr);
    EXPECT_EQ(ring.counters().writePosition, (1440u + 1440u + 4800u) * bytesPerFrame);
    EXPECT_EQ(mixedAt(2879), 2880); // kept from before
    EXPECT_EQ(mixedAt(2880), 0);
    EXPECT_EQ(mixedAt(1440 + 1440 + 4799), 0);
    EXPECT_EQ(track.position, 0u); // only the track that plays moves
}

// Feeds of silence first, so that a device buffer of it is kept when the piece is selected, and silence was heard
// since the last feed, which is no part of the piece.
TEST_F(Ring, StartsAPieceWithTheSampleAtItsPositionBehindKeptSilence) {
    prepare();
    MusicTrack looping = numberedTrack(20000, true);
    looping.position = looping.frameCount();
    for (int step = 0; step < 5; ++step) {
        ring.feed(nullptr);
        drain(800);
    }
    ring.feed(&looping);
    EXPECT_EQ(looping.position, 0u);
    EXPECT_EQ(drain(1440), std::vector<std::int32_t>(1440, 0));
    std::int32_t next = 1;
    for (int step = 0; step < 10; ++step) { // and then without a jump, the kept length being what it may
        ring.feed(&looping);
        const std::uint32_t frames = 300u + 200u * static_cast<std::uint32_t>(step % 3);
        EXPECT_EQ(drain(frames), numbers(next, frames)) << step;
        next += static_cast<std::int32_t>(frames);
    }
}

TEST_F(Ring, StartsAPieceThatPlaysOnceWithItsFirstSample) {
    prepare();
    MusicTrack once = numberedTrack(20000);
    ring.feed(nullptr);
    drain(800);
    ring.feed(&once);
    EXPECT_EQ(drain(1440), std::vector<std::int32_t>(1440, 0));
    EXPECT_EQ(drain(1000), numbers(1, 1000));
    ring.feed(&once);
    EXPECT_EQ(drain(1000), numbers(1001, 1000));
}

TEST_F(Ring, ResumesAPieceWhereItWasLeftWhateverWasHeardBetween) {
    prepare(0, 0); // nothing is kept, so that the piece follows at once
    MusicTrack track = numberedTrack(20000, true);
    ring.feed(&track);
    EXPECT_EQ(drain(1000), numbers(1, 1000));
    ring.feed(&track);
    ring.feed(nullptr);
    EXPECT_EQ(drain(900), std::vector<std::int32_t>(900, 0));
    ring.feed(&track);
    EXPECT_EQ(drain(1000), numbers(1001, 1000));
}

TEST_F(Ring, KeepsOneDeviceBufferAndMixesTheRestAnew) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    drain(500);
    ring.feed(nullptr);
    const AudioRing::Counters counters = ring.counters();
    EXPECT_EQ(counters.readPosition, 500u * bytesPerFrame);
    EXPECT_EQ(counters.readLimit, (500u + 1440u) * bytesPerFrame);
    EXPECT_EQ(mixedAt(500 + 1439), 500 + 1440);
    EXPECT_EQ(mixedAt(500 + 1440), 0);
}

TEST_F(Ring, KeepsNoMoreThanIsMixed) {
    prepare(0, 10000); // a device with a buffer longer than what is mixed ahead
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    drain(4000);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().readLimit, 4800u * bytesPerFrame);
    EXPECT_EQ(ring.counters().writePosition, 9600u * bytesPerFrame);
}

TEST_F(Ring, KeepsEverythingThatIsBeingCopiedEvenIfLongerThanTheDeviceBuffer) {
    prepare(0, 100);
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    const AudioRing::Drain taken = ring.beginDrain(4000); // the copy has begun
    ring.feed(nullptr);
    EXPECT_EQ(ring.counters().readPosition, 0u);
    EXPECT_EQ(ring.counters().readLimit, 4000u * bytesPerFrame);
    for (std::uint32_t frame = 0; frame < taken.frames; ++frame) {
        ASSERT_EQ(sampleIn(taken.data + frame * bytesPerFrame), static_cast<std::int32_t>(frame) + 1);
    }
    EXPECT_EQ(mixedAt(4000), 0);
    ring.endDrain(taken);
    EXPECT_EQ(ring.counters().readPosition, ring.counters().readLimit);
}

TEST_F(Ring, LeavesRoomForWhatIsKept) {
    // Ring of 8,192 frames, of which 6,000 are being copied: no more than the rest can be mixed.
    ASSERT_FALSE(ring.allocate(65536).failed());
    ring.setDeviceBuffer(6000);
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    ring.feed(&track);
    ASSERT_EQ(ring.counters().writePosition, 8192u * bytesPerFrame); // 4,800 kept, 3,392 mixed
    const AudioRing::Drain taken = ring.beginDrain(6000);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().writePosition - ring.counters().readPosition, 65536u);
    for (std::uint32_t frame = 0; frame < taken.frames; ++frame) {
        ASSERT_EQ(sampleIn(taken.data + frame * bytesPerFrame), static_cast<std::int32_t>(frame) + 1);
    }
    ring.endDrain(taken);
}

TEST_F(Ring, CountsWhatTheDeviceTookAndForgetsItWhenFed) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    drain(480);
    drain(320);
    EXPECT_EQ(ring.counters().consumedFrames, 800u);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().consumedFrames, 0u);
    EXPECT_EQ(track.position, 800u);
}

TEST_F(Ring, GivesLessThanWantedRatherThanSilence) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    const AudioRing::Drain taken = ring.beginDrain(6000);
    EXPECT_EQ(taken.frames, 4800u);
    EXPECT_EQ(ring.counters().consumedFrames, 4800u);
    ring.endDrain(taken);
}

TEST_F(Ring, RunsTheMusicClockOnDuringAnUnderrun) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    drain(4800);
    EXPECT_EQ(drain(700), std::vector<std::int32_t>(700, 0));
    EXPECT_EQ(ring.counters().consumedFrames, 5500u);
    ring.feed(&track);
    EXPECT_EQ(track.position, 5500u);
    EXPECT_EQ(drain(100), numbers(5501, 100));
}

TEST_F(Ring, RunsTheMusicClockOnWithoutADevice) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    ring.skip(12000); // a quarter of a second, of which a tenth is mixed
    EXPECT_EQ(ring.counters().readPosition, 4800u * bytesPerFrame);
    EXPECT_EQ(ring.counters().readLimit, 4800u * bytesPerFrame);
    ring.feed(&track);
    EXPECT_EQ(track.position, 12000u);
    ring.skip(100);
    EXPECT_EQ(drain(300), numbers(12101, 300));
}

TEST_F(Ring, IsHeardInOrderAcrossFeeds) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    std::vector<std::int32_t> heard;
    ring.feed(&track);
    for (int step = 0; step < 20; ++step) {
        const std::vector<std::int32_t> part = drain(800);
        heard.insert(heard.end(), part.begin(), part.end());
        ring.feed(&track);
    }
    EXPECT_EQ(heard, numbers(1, 16000));
}

TEST_F(Ring, IsHeardInOrderWhenFedInTheMiddleOfACopy) {
    prepare();
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    std::vector<std::int32_t> heard;
    for (int step = 0; step < 20; ++step) {
        const AudioRing::Drain taken = ring.beginDrain(800);
        ring.feed(&track);
        for (std::uint32_t frame = 0; frame < taken.frames; ++frame) {
            heard.push_back(sampleIn(taken.data + frame * bytesPerFrame));
        }
        ring.endDrain(taken);
    }
    EXPECT_EQ(heard, numbers(1, 16000));
}

TEST_F(Ring, IsHeardInOrderWhenLessThanADeviceBufferIsLeft) {
    prepare();
    MusicTrack track = numberedTrack(30000);
    ring.feed(&track);
    EXPECT_EQ(drain(4000), numbers(1, 4000)); // 800 left, the device buffer is 1,440
    ring.feed(&track);
    EXPECT_EQ(drain(2000), numbers(4001, 2000));
    ring.feed(&track);
    EXPECT_EQ(drain(4000), numbers(6001, 4000));
}

TEST_F(Ring, PlaysAOneShotTrackToItsLastSampleAndThenSilence) {
    prepare();
    MusicTrack track = numberedTrack(2000);
    ring.feed(&track);
    std::vector<std::int32_t> heard;
    for (int step = 0; step < 6; ++step) {
        const std::vector<std::int32_t> part = drain(800);
        heard.insert(heard.end(), part.begin(), part.end());
        ring.feed(&track);
    }
    std::vector<std::int32_t> expected = numbers(1, 2000);
    expected.resize(4800, 0);
    EXPECT_EQ(heard, expected);
    EXPECT_EQ(track.position, 2000u);
    drain(9000);
    drain(9000);
    ring.feed(&track);
    EXPECT_EQ(track.position, 2000u);
    EXPECT_EQ(drain(4800), std::vector<std::int32_t>(4800, 0));
}

TEST_F(Ring, StartsALoopingTrackThatStandsAtItsEndFromSampleZero) {
    prepare();
    MusicTrack track = numberedTrack(3000, true);
    track.position = track.frameCount();
    ring.feed(&track);
    EXPECT_EQ(track.position, 0u);
    std::vector<std::int32_t> expected = numbers(1, 3000);
    const std::vector<std::int32_t> again = numbers(1, 1800);
    expected.insert(expected.end(), again.begin(), again.end());
    EXPECT_EQ(drain(4800), expected);
}

TEST_F(Ring, TakesALoopingTrackWithoutSamplesAsSilence) {
    prepare();
    MusicTrack track = numberedTrack(0, true);
    ring.feed(&track);
    drain(800);
    ring.feed(&track);
    EXPECT_EQ(track.position, 0u);
    EXPECT_EQ(drain(4800), std::vector<std::int32_t>(4800, 0));
}

TEST_F(Ring, CountersWrapPastTwoToThe32) {
    prepare(0xFFFFFFFFu - 7999u);
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    EXPECT_LT(ring.counters().writePosition, 100000u); // has wrapped
    std::vector<std::int32_t> heard;
    for (int step = 0; step < 20; ++step) {
        const std::vector<std::int32_t> part = drain(800);
        heard.insert(heard.end(), part.begin(), part.end());
        ring.feed(&track);
    }
    EXPECT_EQ(heard, numbers(1, 16000));
    EXPECT_LT(ring.counters().readPosition, 200000u);
}

TEST_F(Ring, UnderrunsWhileCountersWrapAsEverywhere) {
    prepare(0xFFFFFFFFu - 4800u * 8u + 1u); // the first feed ends exactly at 2^32
    MusicTrack track = numberedTrack(20000);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().writePosition, 0u);
    EXPECT_EQ(drain(4800), numbers(1, 4800));
    EXPECT_EQ(drain(100), std::vector<std::int32_t>(100, 0));
    ring.feed(&track);
    EXPECT_EQ(drain(4800), numbers(4901, 4800));
}

// A mixing position that drifted by one sample in a hundred thousand loops would show here.
TEST_F(Ring, StaysExactOverAHundredThousandLoops) {
    prepare();
    constexpr std::uint64_t length = 1009; // prime, so that no wrap falls together with a step
    MusicTrack track = numberedTrack(length, true);
    track.position = length;
    ring.feed(&track);
    std::uint64_t heard = 0;
    while (heard < 100000 * length) {
        const std::uint32_t wanted = 700 + static_cast<std::uint32_t>(heard % 211);
        const AudioRing::Drain taken = ring.beginDrain(wanted);
        ASSERT_EQ(taken.frames, wanted);
        for (std::uint32_t frame = 0; frame < taken.frames; ++frame) {
            float left = 0;
            std::memcpy(&left, taken.data + frame * bytesPerFrame, sizeof left);
            ASSERT_EQ(left * 32768.0f, static_cast<float>(heard % length + 1)) << heard;
            ++heard;
        }
        ring.endDrain(taken);
        ring.feed(&track);
        ASSERT_EQ(track.position, heard % length);
    }
}

} // namespace
} // namespace dunkman
