#include "app/recording_writer.h"

#include "base/fatal.h"
#include "base/frame_state.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

class Recording : public ProgramFixture {
protected:
    // A replay over the game screen, which a probe stands in for.
    void startReplay(std::string_view text) {
        data.write("recording.json5", text);
        start(InputMode::Replay);
        installProbe(ScreenId::Game);
    }
};

TEST_F(Recording, AppliesChangesInTheStepTheyWereRecordedFor) {
    startReplay(R"([{"frame":5,"newKeyStates":[{"key":68,"state":3}]},{"frame":99,"newKeyStates":[]}])");
    for (int step = 0; step < 5; ++step) {
        iterateAfter(stepNanoseconds);
        EXPECT_EQ(findKeyState(keys::d), KeyState::Up) << step;
    }
    static KeyState seen;
    probe.onUpdate = [] { seen = findKeyState(keys::d); };
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(seen, KeyState::Pressed);
    EXPECT_EQ(findKeyState(keys::d), KeyState::Held); // aged after the step
}

TEST_F(Recording, TheKeyboardIsNotReadDuringAReplay) {
    startReplay(R"([{"frame":99,"newKeyStates":[]}])");
    press(keys::x);
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(findKeyState(keys::x), KeyState::Up);
}

TEST_F(Recording, AfterTheLastRecordTheSameStepRunsTheGameOverScreenLive) {
    startReplay(R"([{"frame":1,"newKeyStates":[{"key":68,"state":3}]}])");
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(probe.log, (std::vector<std::string>{"update", "render"}));
    iterateAfter(stepNanoseconds);
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
    EXPECT_EQ(frameState.inputMode, InputMode::Live);
    EXPECT_EQ(probe.log.size(), 2u); // no second update: the game-over screen ran in its place
    EXPECT_EQ(findKeyState(keys::d), KeyState::Up);
    EXPECT_EQ(recording.gameStep, 0u);
    EXPECT_EQ(recording.replayIndex, 0u);
    press(keys::x);
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(findKeyState(keys::x), KeyState::Held);
}

TEST_F(Recording, StepsLeftOfTheCatchUpRunLiveWithASixtieth) {
    startReplay(R"([{"frame":0,"newKeyStates":[]}])");
    iterateAfter(50000001); // three steps are due; the first ends the replay
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
    EXPECT_EQ(frameState.frameDelta, 1.0 / 60.0);
    EXPECT_TRUE(probe.log.empty());
}

TEST_F(Recording, AnEmptyOrMissingRecordingEndsTheReplayInItsFirstStep) {
    start(InputMode::Replay);
    installProbe(ScreenId::Game);
    iterateAfter(stepNanoseconds);
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
    EXPECT_EQ(frameState.inputMode, InputMode::Live);
}

TEST_F(Recording, ARecordWhoseFrameIsNotDueBlocksTheReplay) {
    startReplay(R"([{"frame":2,"newKeyStates":[]},{"frame":1,"newKeyStates":[]}])");
    for (int step = 0; step < 50; ++step) {
        iterateAfter(stepNanoseconds);
    }
    EXPECT_EQ(recording.replayIndex, 1u);
    EXPECT_EQ(frameState.inputMode, InputMode::Replay);
}

TEST_F(Recording, WrongKindsReadAsZeroOrEmpty) {
    startReplay(R"([{"frame":"3","newKeyStates":[{"key":68,"state":2.0},7]},5])");
    ASSERT_EQ(recording.records.size(), 2u);
    EXPECT_EQ(recording.records[0].frame, 0u);
    EXPECT_EQ(recording.records[0].newKeyStates, (KeyChanges{{68, KeyState::Up}, {0, KeyState::Up}}));
    EXPECT_EQ(recording.records[1].frame, 0u);
    EXPECT_TRUE(recording.records[1].newKeyStates.empty());
}

TEST_F(Recording, RecordModeStartsEmpty) {
    data.write("recording.json5", R"([{"frame":3,"newKeyStates":[]}])");
    start(InputMode::Record);
    EXPECT_TRUE(recording.records.empty());
}

TEST_F(Recording, KeepsOnlyStepsInWhichAKeyChanged) {
    start(InputMode::Record);
    installProbe(ScreenId::Game);
    iterateAfter(stepNanoseconds);
    press(keys::d);
    iterateAfter(stepNanoseconds);
    iterateAfter(stepNanoseconds);
    letGo(keys::d);
    iterateAfter(stepNanoseconds);
    ASSERT_EQ(recording.records.size(), 2u);
    EXPECT_EQ(recording.records[0].frame, 1u);
    EXPECT_EQ(recording.records[0].newKeyStates, (KeyChanges{{keys::d, KeyState::Pressed}}));
    EXPECT_EQ(recording.records[1].frame, 3u);
    EXPECT_EQ(recording.records[1].newKeyStates, (KeyChanges{{keys::d, KeyState::Released}}));
}

TEST_F(Recording, ListsChangesInTheOrderOfSampling) {
    start(InputMode::Record);
    installProbe(ScreenId::Game);
    for (const std::int32_t key : {keys::enter, keys::right, keys::space, keys::x, keys::a, keys::w}) {
        press(key);
    }
    iterateAfter(stepNanoseconds);
    const KeyChanges expected = {{keys::w, KeyState::Pressed},     {keys::a, KeyState::Pressed},
                                 {keys::right, KeyState::Pressed}, {keys::x, KeyState::Pressed},
                                 {keys::space, KeyState::Pressed}, {keys::enter, KeyState::Pressed}};
    ASSERT_EQ(recording.records.size(), 1u);
    EXPECT_EQ(recording.records[0].newKeyStates, expected);
    saveRecording();
    const std::string file = data.read("recording.json5");
    std::size_t at = 0;
    for (const KeyChange& change : expected) {
        const std::size_t found = file.find("\"key\": " + std::to_string(change.virtualKey) + ",");
        ASSERT_NE(found, std::string::npos);
        EXPECT_GE(found, at) << change.virtualKey;
        at = found;
    }
}

TEST_F(Recording, AppliesChangesWhateverTheirOrder) {
    startReplay(R"([{"frame":0,"newKeyStates":[{"key":87,"state":1},{"key":13,"state":3},{"key":65,"state":3},
                                               {"key":87,"state":3}]},{"frame":99,"newKeyStates":[]}])");
    static std::vector<KeyState> seen;
    probe.onUpdate = [] { seen = {findKeyState(keys::enter), findKeyState(keys::a), findKeyState(keys::w)}; };
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(seen, std::vector<KeyState>(3, KeyState::Pressed)); // of two for one key, the later one
}

TEST_F(Recording, WhatWasSavedLoadsAsItWas) {
    writable::recording.records = {{2, {{keys::d, KeyState::Pressed}, {keys::x, KeyState::Released}}},
                                   {700, {{keys::d, KeyState::Up}}}};
    const std::vector<InputRecord> saved = recording.records;
    saveRecording();
    writable::recording.records.clear();
    loadRecording();
    ASSERT_EQ(recording.records.size(), saved.size());
    for (std::size_t i = 0; i < saved.size(); ++i) {
        EXPECT_EQ(recording.records[i].frame, saved[i].frame);
        EXPECT_EQ(recording.records[i].newKeyStates, saved[i].newKeyStates);
    }
    EXPECT_FALSE(std::filesystem::exists("recording.json5.new"));
}

TEST_F(Recording, IsWrittenInTheWritersLayout) {
    writable::recording.records = {{2, {{keys::d, KeyState::Pressed}}}};
    saveRecording();
    EXPECT_EQ(data.read("recording.json5"), "[\n"
                                            "  {\n"
                                            "    \"frame\": 2, \n"
                                            "    \"newKeyStates\": [\n"
                                            "      {\n"
                                            "        \"key\": 68, \n"
                                            "        \"state\": 3\n"
                                            "      }\n"
                                            "    ]\n"
                                            "  }\n"
                                            "]");
}

TEST_F(Recording, SayingThatItCannotBeSavedNamesTheFile) {
    std::filesystem::create_directory("recording.json5.new");
    try {
        saveRecording();
        FAIL() << "no message";
    } catch (const FatalError& error) {
        EXPECT_NE(std::string(error.what()).find("recording.json5.new"), std::string::npos);
    }
}

} // namespace

} // namespace dunkman
