#include "app/frame.h"

#include "app/recording.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "platform/simulated/audio_sim.h"
#include "render/gl.h"
#include "render/image_table.h"
#include "screens/screen_writer.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

std::vector<std::string>* order = nullptr;

void noteClear(GLbitfield mask) {
    order->push_back(mask == 0x4100 ? "clear colour and depth" : "clear something else");
}

class Frame : public ProgramFixture {
protected:
    void startWithProbe(InputMode mode, ScreenId id) {
        start(mode);
        installProbe(id);
    }
};

TEST_F(Frame, ClearsThenUpdatesThenRenders) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    order = &probe.log;
    glClear = noteClear;
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(probe.log, (std::vector<std::string>{"clear colour and depth", "update", "render"}));
}

TEST_F(Frame, KeysAreSampledBeforeUpdateAndAgedAfterRender) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    static KeyState inUpdate, inRender;
    probe.onUpdate = [] { inUpdate = keyState(keys::x); };
    probe.onRender = [] { inRender = keyState(keys::x); };
    press(keys::x);
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(inUpdate, KeyState::Pressed);
    EXPECT_EQ(inRender, KeyState::Pressed);
    EXPECT_EQ(keyState(keys::x), KeyState::Held);
}

TEST_F(Frame, RendersTheOldScreenOnceMoreWhenUpdateSwitches) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    probe.onUpdate = [] { switchTo(ScreenId::Pause); };
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(probe.log, (std::vector<std::string>{"update", "render"}));
    EXPECT_TRUE(isCurrent(ScreenId::Pause));
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(probe.log.size(), 2u);
}

TEST_F(Frame, ANullScreenEndsTheProcessWithoutRendering) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    probe.onUpdate = [] { writable::screenState.currentScreen = nullptr; };
    try {
        iterateAfter(stepNanoseconds);
        FAIL() << "the process goes on";
    } catch (const simulated::ProgramExit& exit) {
        EXPECT_EQ(exit.status, 0);
    }
    EXPECT_EQ(probe.log, (std::vector<std::string>{"update"}));
}

TEST_F(Frame, ANullScreenGivesBackTheDesktopAndWaitsForTheSoundAndReleasesNothingElse) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    probe.onUpdate = [] { writable::screenState.currentScreen = nullptr; };
    simulated::machine.calls.clear();
    EXPECT_THROW(iterateAfter(stepNanoseconds), simulated::ProgramExit);
    EXPECT_EQ(simulated::machine.calls, (std::vector<std::string>{"restoreDesktop"}));
    EXPECT_TRUE(simulated::isAudioFinished());
    EXPECT_FALSE(pictures.imageTable.empty());
}

TEST_F(Frame, OnlyRecordModeSavesWhenTheProgramEnds) {
    startWithProbe(InputMode::Live, ScreenId::Menu);
    probe.onUpdate = [] { writable::screenState.currentScreen = nullptr; };
    EXPECT_THROW(iterateAfter(stepNanoseconds), simulated::ProgramExit);
    EXPECT_FALSE(std::filesystem::exists("recording.json5"));
    writable::frameState.inputMode = InputMode::Record;
    writable::screenState.currentScreen = &probe;
    EXPECT_THROW(iterateAfter(stepNanoseconds), simulated::ProgramExit);
    EXPECT_EQ(data.read("recording.json5"), "[]");
}

TEST_F(Frame, RecordsInTheGameOnly) {
    startWithProbe(InputMode::Record, ScreenId::Menu);
    press(keys::x);
    iterateAfter(stepNanoseconds);
    EXPECT_TRUE(recording.records.empty());
    EXPECT_EQ(recording.gameStep, 0u);
}

} // namespace

} // namespace dunkman
