#include "platform/film/film.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "audio/decode.h"
#include "audio/music_writer.h"
#include "audio/sound.h"
#include "base/fatal.h"
#include "platform/simulated/platform_sim.h"
#include "tests/fakes/scratch_folder.h"

// The sound that films are given: the game's own feed, drained step by step.
namespace dunkman {
namespace {

constexpr std::size_t framesPerStep = 800; // of 48,000 a second in 1/60 s

class Film : public testing::Test {
protected:
    Film() {
        platform::resetMachine();
        resetAudio();
        startAudio();
        writable::music.gameTrack = numbered(5000, 1);
        writable::music.gameTrack.loop = true;
        writable::music.gameTrack.position = 5000;
        writable::music.introTrack = numbered(5000, 10001);
    }
    ~Film() override { resetAudio(); }

    // A piece in which every sample tells its place.
    static MusicTrack numbered(std::int16_t count, int first) {
        MusicTrack track;
        for (int i = 0; i < count; ++i) {
            track.samples.push_back(static_cast<std::int16_t>(first + i));
        }
        return track;
    }

    // What a step adds to the film: each frame as a sample of the piece that it comes from, 0 for silence.
    static std::vector<int> soundOfStep() {
        feedAudio();
        std::array<float, 2 * framesPerStep> stereo{};
        film::takeSound(stereo);
        std::vector<int> samples;
        for (std::size_t frame = 0; frame < framesPerStep; ++frame) {
            EXPECT_EQ(stereo.at(2 * frame), stereo.at(2 * frame + 1));
            samples.push_back(static_cast<int>(stereo.at(2 * frame) * 32768.0f));
        }
        return samples;
    }
};

TEST_F(Film, IsSilentWhileNothingIsSelected) { EXPECT_EQ(soundOfStep(), std::vector<int>(framesPerStep, 0)); }

TEST_F(Film, HearsAPieceFromTheStepThatSelectsIt) {
    soundOfStep();
    selectMusic(MusicSelection::Intro);
    const std::vector<int> sound = soundOfStep();
    EXPECT_EQ(sound.front(), 10001);
    EXPECT_EQ(sound.back(), 10001 + 799);
}

TEST_F(Film, HearsEverySampleOnce) {
    selectMusic(MusicSelection::Game);
    std::vector<int> heard;
    for (int step = 0; step < 20; ++step) {
        const std::vector<int> sound = soundOfStep();
        heard.insert(heard.end(), sound.begin(), sound.end());
    }
    for (std::size_t frame = 0; frame < heard.size(); ++frame) {
        ASSERT_EQ(heard.at(frame), 1 + static_cast<int>(frame % 5000)) << "at frame " << frame;
    }
}

TEST_F(Film, HearsNothingOnceTheAudioHasStopped) {
    selectMusic(MusicSelection::Game);
    feedAudio();
    stopAudio();
    std::array<float, 4> stereo = {1.0f, 1.0f, 1.0f, 1.0f};
    film::takeSound(stereo);
    EXPECT_EQ(stereo, (std::array<float, 4>{}));
}

TEST_F(Film, DecodesWhateverRateAndChannels) {
    // A second of music; decoders may leave the encoder's padding, two frames of 1152 samples, where it is.
    for (const wchar_t* name : {L"mono_48000.mp3", L"stereo_44100.mp3"}) {
        const MusicTrack track = decodeMusic(std::wstring(L"tests/audio/data/") + name);
        EXPECT_NEAR(static_cast<double>(track.frameCount()), 48000.0, 2 * 1152.0);
        EXPECT_EQ(track.position, track.frameCount());
        EXPECT_FALSE(track.loop);
    }
    EXPECT_TRUE(simulated::machine.debugLines.empty());
}

TEST_F(Film, DoesWithoutMusicThatIsNotThere) {
    const ScratchFolder folder;
    folder.write("short.mp3", "no music at all");
    EXPECT_EQ(decodeMusic(L"none.mp3").frameCount(), 0u);
    EXPECT_EQ(decodeMusic(L"short.mp3").frameCount(), 0u);
    EXPECT_EQ(simulated::machine.debugLines,
              (std::vector<std::string>{"audio: none.mp3 cannot be read, or is no MP3: no music from it",
                                        "audio: short.mp3 cannot be read, or is no MP3: no music from it"}));
}

TEST_F(Film, SaysWhenThereIsNoDecoder) {
    const std::string before = std::getenv("PATH");
    setenv("PATH", "/nowhere", 1);
    std::string message;
    try {
        decodeMusic(L"tests/audio/data/mono_48000.mp3");
    } catch (const FatalError& error) {
        message = error.what();
    }
    setenv("PATH", before.c_str(), 1);
    EXPECT_EQ(message,
              "ffmpeg, which decodes the music, cannot be run: No such file or directory. Install ffmpeg.");
}

} // namespace
} // namespace dunkman
