#include "audio/sound.h"

#include <gtest/gtest.h>

#include "audio/fed_ring.h"
#include "audio/music_track.h"
#include "audio/music_writer.h"
#include "tests/audio/debug_lines.h"

// The process-wide functions, on the device that takes nothing.
namespace dunkman {
namespace {

class Sound : public ::testing::Test {
protected:
    void SetUp() override {
        resetAudio();
        testing::takeDebugLines();
    }
    void TearDown() override { resetAudio(); }
};

float leftAt(std::uint32_t position) { return *reinterpret_cast<const float*>(fedRing->at(position)); }

TEST_F(Sound, LoopsTheGameTrackAndRewindsTheIntro) {
    startAudio();
    loadMusicTracks();
    EXPECT_TRUE(music.gameTrack.loop);
    EXPECT_FALSE(music.introTrack.loop);
    EXPECT_EQ(music.gameTrack.position, music.gameTrack.frameCount());
    EXPECT_EQ(music.introTrack.position, 0u);
    EXPECT_EQ(music.musicSelection, MusicSelection::None);
    EXPECT_EQ(testing::takeDebugLines(), std::vector<std::string>());
}

TEST_F(Sound, FeedsTheSelectedTrack) {
    startAudio();
    writable::music.introTrack.samples.assign(9600, 16384);
    writable::music.gameTrack.samples.assign(9600, 8192);
    feedAudio();
    EXPECT_EQ(leftAt(0), 0.0f);
    const std::uint32_t behindKept = 1440 * 8;
    writable::music.musicSelection = MusicSelection::Intro;
    feedAudio();
    EXPECT_EQ(leftAt(behindKept), 0.5f);
    writable::music.musicSelection = MusicSelection::Game;
    feedAudio();
    EXPECT_EQ(leftAt(behindKept), 0.25f);
    writable::music.musicSelection = static_cast<MusicSelection>(3);
    feedAudio();
    EXPECT_EQ(leftAt(behindKept), 0.0f);
}

TEST_F(Sound, KeepsFeedingSilenceWithNothingSelected) {
    startAudio();
    feedAudio();
    EXPECT_EQ(fedRing->counters().writePosition, 4800u * 8);
}

TEST_F(Sound, DoesNothingBeforeStartAndAfterStop) {
    feedAudio();
    EXPECT_EQ(fedRing, nullptr);
    stopAudio();
    startAudio();
    EXPECT_NE(fedRing, nullptr);
    stopAudio();
    EXPECT_EQ(fedRing, nullptr);
    stopAudio();
    feedAudio();
}

TEST_F(Sound, ResetForgetsTracksAndSelection) {
    writable::music.gameTrack.samples.assign(10, 1);
    writable::music.gameTrack.loop = true;
    writable::music.introTrack.position = 5;
    writable::music.musicSelection = MusicSelection::Game;
    resetAudio();
    EXPECT_EQ(music.gameTrack.frameCount(), 0u);
    EXPECT_FALSE(music.gameTrack.loop);
    EXPECT_EQ(music.introTrack.position, 0u);
    EXPECT_EQ(music.musicSelection, MusicSelection::None);
}

} // namespace
} // namespace dunkman
