#include "tests/scenarios/play.h"

#include <gtest/gtest.h>

#include "app/recording.h"

namespace dunkman {

namespace {

constexpr const char* scene = R"(
    {"recipe": "flamingo", "position": [2, 0.8]}, {"recipe": "pineapple", "position": [3, 0.2]},
    {"recipe": "spawnPoint", "position": [9, 1.5]}, {"recipe": "spawnPoint", "position": [12, -1]},
    {"recipe": "zombie2HpFast", "position": [6, 1]},
    {"recipe": "arena", "position": [8, 0], "spawnsRemaining": -1, "maxSimultaneousZombies": 3})";

// Two minutes at most of running about, swinging, dropping and throwing until the zombies have won.
void playToTheDeath(Play& play) {
    const std::vector<std::int32_t> dance = {keys::d, keys::z, keys::x,    keys::w, keys::right, keys::space,
                                             keys::s, keys::a, keys::down, keys::x, keys::d,     keys::enter};
    for (std::size_t turn = 0; turn < 1000 && !play.isOver(); ++turn) {
        const std::int32_t key = dance[turn * 7 % dance.size()];
        play.hold(keys::d).hold(key).step(static_cast<int>(turn % 5) + 1).letGo(key);
        play.step(static_cast<int>(turn % 3));
    }
    play.letGo(keys::d).until(
        "the zombies win", [&] { return play.isOver(); }, 3000);
}

TEST(Recording, ReplaysBitForBitUpToItsLastRecord) {
    Play play(scene);
    playToTheDeath(play);
    play.untilTheEnd(1300); // the recording is saved when the credits are over
    const std::vector<std::string> recorded = play.allWorlds();
    ASSERT_FALSE(recording.records.empty());
    const std::uint64_t lastRecord = recording.records.back().frame;
    ASSERT_GT(lastRecord, 600u); // a game worth the name
    ASSERT_LT(lastRecord, recorded.size());

    play.restart(InputMode::Replay);
    play.until(
        "the replay is over", [&] { return play.isOver(); }, 8000);
    // In the step of the last record the end screen is already there.
    ASSERT_EQ(play.allWorlds().size(), lastRecord);
    for (std::size_t step = 0; step < lastRecord; ++step) {
        ASSERT_EQ(play.allWorlds()[step], recorded[step]) << "step " << step;
    }
    EXPECT_EQ(frameState.inputMode, InputMode::Live);
}

TEST(Recording, TheLiveKeyboardDoesNotDisturbAReplay) {
    Play play(scene);
    play.hold(keys::d).step(100).letGo(keys::d).tap(keys::z).hold(keys::a).step(100);
    saveRecording();
    const std::vector<std::string> recorded = play.allWorlds();
    const auto lastRecord = static_cast<std::size_t>(recording.records.back().frame);

    play.restart(InputMode::Replay);
    play.hold(keys::w).hold(keys::x).until("the replay is over", [&] { return play.isOver(); });
    ASSERT_EQ(play.allWorlds().size(), lastRecord);
    EXPECT_EQ(play.allWorlds().back(), recorded[lastRecord - 1]);
}

TEST(Recording, TheSameKeysGiveTheSameGameAndTheSameFile) {
    Play play(scene);
    playToTheDeath(play);
    play.untilTheEnd(1300);
    const std::string recordingFile = play.data.read("recording.json5");
    const std::string lastWorld =
        play.allWorlds()[static_cast<std::size_t>(recording.records.back().frame) - 1];

    play.restart(InputMode::Record);
    playToTheDeath(play);
    play.untilTheEnd(1300);
    EXPECT_EQ(play.data.read("recording.json5"), recordingFile);
    EXPECT_EQ(play.allWorlds()[static_cast<std::size_t>(recording.records.back().frame) - 1], lastWorld);
}

} // namespace

} // namespace dunkman
