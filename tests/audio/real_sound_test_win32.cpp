#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "audio/decode.h"
#include "audio/fed_ring.h"
#include "audio/music_writer.h"
#include "audio/sound.h"
#include "tests/audio/debug_lines.h"

// The system's own decoder and whatever output device the machine has, or has not.
namespace dunkman {
namespace {

// How much of the track is a sine of this pitch: 1 for a pure one, whatever its phase.
double shareOfPitch(const MusicTrack& track, double hertz) {
    double sine = 0.0;
    double cosine = 0.0;
    double power = 0.0;
    // The middle half second: coders blur both ends.
    const std::size_t from = 12000;
    const std::size_t count = 24000;
    for (std::size_t index = from; index < from + count && index < track.samples.size(); ++index) {
        const double sample = track.samples[index];
        const double angle = 2.0 * std::numbers::pi * hertz * static_cast<double>(index) / 48000.0;
        sine += sample * std::sin(angle);
        cosine += sample * std::cos(angle);
        power += sample * sample;
    }
    return power == 0.0 ? 0.0 : 2.0 * (sine * sine + cosine * cosine) / (static_cast<double>(count) * power);
}

// A second, and the silence that encoders put in front and behind.
void expectAboutASecond(const MusicTrack& track) {
    EXPECT_GE(track.frameCount(), 47500u);
    EXPECT_LE(track.frameCount(), 48000u + 48000u / 3);
    EXPECT_EQ(track.position, track.frameCount());
    EXPECT_FALSE(track.loop);
}

class RealDecoder : public ::testing::Test {
protected:
    void SetUp() override { testing::takeDebugLines(); }

    static MusicTrack decode(const wchar_t* name) {
        return decodeMusic(std::wstring(L"tests/audio/data/") + name);
    }
};

TEST_F(RealDecoder, TakesMonoAtTheRightRateAsItIs) {
    const MusicTrack track = decode(L"mono_48000.mp3");
    expectAboutASecond(track);
    EXPECT_TRUE(testing::takeDebugLines().empty());
}

TEST_F(RealDecoder, MixesDownAndResamplesStereo) {
    const MusicTrack track = decode(L"stereo_44100.mp3"); // 440 Hz left, 660 Hz right
    expectAboutASecond(track);
    EXPECT_NEAR(shareOfPitch(track, 440.0), 0.5, 0.02);
    EXPECT_NEAR(shareOfPitch(track, 660.0), 0.5, 0.02);
    EXPECT_TRUE(testing::takeDebugLines().empty());
}

TEST_F(RealDecoder, ResamplesFromOtherRates) {
    for (const wchar_t* const name : {L"mono_22050_vbr.mp3", L"mono_8000_plain.mp3"}) {
        const MusicTrack track = decode(name);
        expectAboutASecond(track);
        EXPECT_GT(shareOfPitch(track, 440.0), 0.97);
    }
    const MusicTrack tagged = decode(L"stereo_32000_tagged.mp3");
    expectAboutASecond(tagged);
    EXPECT_NEAR(shareOfPitch(tagged, 440.0) + shareOfPitch(tagged, 660.0), 1.0, 0.04);
}

struct BadFile {
    const wchar_t* name;
    const char* line;
};

TEST_F(RealDecoder, GivesAnEmptyTrackAndOneLineForABadFile) {
    const BadFile files[] = {
        {L"missing.mp3", "audio: tests/audio/data/missing.mp3 cannot be read: no music from it"},
        {L"empty.mp3", "audio: tests/audio/data/empty.mp3 is empty: no music from it"},
        {L"not_music.mp3", "audio: tests/audio/data/not_music.mp3 is no MP3 file: no music from it"},
    };
    for (const BadFile& file : files) {
        const MusicTrack track = decode(file.name);
        EXPECT_EQ(track.frameCount(), 0u) << file.line;
        EXPECT_EQ(track.position, 0u) << file.line;
        EXPECT_EQ(testing::takeDebugLines(), std::vector<std::string>{file.line});
    }
}

TEST_F(RealDecoder, PlaysACutOffFileAsFarAsItGoesAndSaysSo) {
    const MusicTrack track = decode(L"cut_off.mp3");
    EXPECT_GT(track.frameCount(), 0u);
    EXPECT_EQ(track.position, track.frameCount());
    EXPECT_EQ(testing::takeDebugLines(),
              std::vector<std::string>{
                  "audio: tests/audio/data/cut_off.mp3 is cut off: it plays as far as it goes"});
}

// Starts, plays, stops; the milliseconds that stopping took.
double stopMillisecondsAfter(unsigned playMilliseconds) {
    testing::takeDebugLines();
    startAudio();
    const std::size_t lines = testing::takeDebugLines().size();
    const bool hasDevice = lines == 0;
    EXPECT_LE(lines, 1u); // that there is none
    writable::music.gameTrack.samples.assign(48000, 100);
    writable::music.gameTrack.loop = true;
    writable::music.musicSelection = MusicSelection::Game;
    for (unsigned passed = 0; passed < playMilliseconds; passed += 10) {
        feedAudio();
        Sleep(10);
    }
    if (hasDevice && playMilliseconds >= 300) {
        // The device takes what time has passed; a busy machine's may be slow.
        EXPECT_GT(music.gameTrack.position, 48u * 30u);
    }
    const auto start = std::chrono::steady_clock::now();
    stopAudio();
    const std::chrono::duration<double, std::milli> spent = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(fedRing, nullptr);
    feedAudio();
    resetAudio();
    return spent.count();
}

TEST(RealOutput, StartsAndStopsInAnyStateWithinAHundredMilliseconds) {
    double slowest = 0.0; // of the best of each state: a busy machine delays a single stop
    for (const unsigned playMilliseconds : {0u, 10u, 300u}) {
        double best = 1e9;
        for (int round = 0; round < 5 && best >= 100.0; ++round) {
            best = std::min(best, stopMillisecondsAfter(playMilliseconds));
        }
        slowest = std::max(slowest, best);
    }
    EXPECT_LT(slowest, 100.0);
}

TEST(RealOutput, IsFinishedFromAnyStateAndAsOftenAsAsked) {
    finishAudio();
    startAudio();
    Sleep(50);
    finishAudio();
    EXPECT_EQ(fedRing, nullptr);
    finishAudio();
    startAudio();
    stopAudio();
    finishAudio();
    EXPECT_EQ(fedRing, nullptr);
    testing::takeDebugLines();
}

} // namespace
} // namespace dunkman
