#include "audio/sound.h"

#include <gtest/gtest.h>

#include "audio/fed_ring.h"
#include "audio/music_selection.h"
#include "audio/music_track.h"
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
    EXPECT_TRUE(gameTrack.loop);
    EXPECT_FALSE(introTrack.loop);
    EXPECT_EQ(gameTrack.position, gameTrack.frameCount());
    EXPECT_EQ(introTrack.position, 0u);
    EXPECT_EQ(musicSelection, MusicSelection::None);
    EXPECT_EQ(testing::takeDebugLines(), std::vector<std::string>());
}

TEST_F(Sound, FeedsTheSelectedTrack) {
    startAudio();
    introTrack.samples.assign(9600, 16384);
    gameTrack.samples.assign(9600, 8192);
    feedAudio();
    EXPECT_EQ(leftAt(0), 0.0f);
    const std::uint32_t behindKept = 1440 * 8;
    musicSelection = MusicSelection::Intro;
    feedAudio();
    EXPECT_EQ(leftAt(behindKept), 0.5f);
    musicSelection = MusicSelection::Game;
    feedAudio();
    EXPECT_EQ(leftAt(behindKept), 0.25f);
    musicSelection = static_cast<MusicSelection>(3);
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
    gameTrack.samples.assign(10, 1);
    gameTrack.loop = true;
    introTrack.position = 5;
    musicSelection = MusicSelection::Game;
    resetAudio();
    EXPECT_EQ(gameTrack.frameCount(), 0u);
    EXPECT_FALSE(gameTrack.loop);
    EXPECT_EQ(introTrack.position, 0u);
    EXPECT_EQ(musicSelection, MusicSelection::None);
}

} // namespace
} // namespace dunkman
