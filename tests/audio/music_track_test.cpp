#include "audio/music_track.h"

#include <gtest/gtest.h>

#include "audio/music_writer.h"

namespace dunkman {
namespace {

MusicTrack trackOfLength(std::size_t frames, std::uint64_t position, bool loop) {
    MusicTrack track;
    track.samples.resize(frames);
    track.position = position;
    track.loop = loop;
    return track;
}

TEST(MusicTrack, LoopsFromItsEndToZero) {
    MusicTrack track = trackOfLength(100, 100, true);
    track.advance(0);
    EXPECT_EQ(track.position, 0u);
}

TEST(MusicTrack, KeepsTheRemainderOfALongJumpWhenLooping) {
    MusicTrack track = trackOfLength(100, 90, true);
    track.advance(100000 * 100 + 15);
    EXPECT_EQ(track.position, 5u);
}

TEST(MusicTrack, StaysAtTheEndWithoutLoop) {
    MusicTrack track = trackOfLength(100, 90, false);
    track.advance(9);
    EXPECT_EQ(track.position, 99u);
    track.advance(1);
    EXPECT_EQ(track.position, 100u);
    track.advance(800);
    EXPECT_EQ(track.position, 100u);
}

TEST(MusicTrack, StaysAtZeroWithoutSamples) {
    MusicTrack looping = trackOfLength(0, 0, true);
    looping.advance(4800);
    EXPECT_EQ(looping.position, 0u);
    MusicTrack once = trackOfLength(0, 0, false);
    once.advance(4800);
    EXPECT_EQ(once.position, 0u);
}

TEST(MusicTrack, SaysWhatIsDueWithoutMoving) {
    const MusicTrack track = trackOfLength(100, 90, true);
    EXPECT_EQ(track.positionAfter(25), 15u);
    EXPECT_EQ(track.positionAfter(-25), 65u);
    EXPECT_EQ(track.position, 90u);
}

TEST(SelectedTrack, FollowsTheSelectionAndIsNullForAnyOtherNumber) {
    writable::music.musicSelection = MusicSelection::Intro;
    EXPECT_EQ(selectedTrack(), &music.introTrack);
    writable::music.musicSelection = MusicSelection::Game;
    EXPECT_EQ(selectedTrack(), &music.gameTrack);
    for (const std::int32_t number : {0, 3, -1, 1000}) {
        writable::music.musicSelection = static_cast<MusicSelection>(number);
        EXPECT_EQ(selectedTrack(), nullptr) << number;
    }
    writable::music.musicSelection = MusicSelection::None;
}

TEST(MusicSelection, HasTheNumbersOfItsNames) {
    EXPECT_EQ(static_cast<std::int32_t>(MusicSelection::None), 0);
    EXPECT_EQ(static_cast<std::int32_t>(MusicSelection::Intro), 1);
    EXPECT_EQ(static_cast<std::int32_t>(MusicSelection::Game), 2);
}

} // namespace
} // namespace dunkman
