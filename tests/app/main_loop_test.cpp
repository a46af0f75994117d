#include "app/main_loop.h"

#include <cfenv>
#include <cmath>
#include <string>
#include <vector>

#include "base/arithmetic.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "platform/platform.h"
#include "render/gl.h"
#include "screens/screen_writer.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

int viewports = 0;
int viewportWidth = 0;
int viewportHeight = 0;

void countViewport(GLint, GLint, GLsizei width, GLsizei height) {
    ++viewports;
    viewportWidth = width;
    viewportHeight = height;
}

class MainLoop : public ProgramFixture {
protected:
    void startWithProbe(InputMode mode) {
        start(mode);
        installProbe(ScreenId::Menu);
    }

    std::size_t stepsSoFar() const { return probe.log.size() / 2; }
};

TEST_F(MainLoop, SetsTheViewportOnceForASizeThatNeverChanges) {
    startWithProbe(InputMode::Live);
    viewports = 0;
    glViewport = countViewport;
    for (int i = 0; i < 5; ++i) {
        iterateAfter(stepNanoseconds);
    }
    EXPECT_EQ(viewports, 1);
    EXPECT_EQ(viewportWidth, 1920);
    EXPECT_DOUBLE_EQ(frameState.aspectRatio, 1920.0 / 1080.0);
}

TEST_F(MainLoop, FollowsTheClientSize) {
    startWithProbe(InputMode::Live);
    viewports = 0;
    glViewport = countViewport;
    iterateAfter(stepNanoseconds);
    simulated::machine.clientSize = {960, 540};
    iterateAfter(stepNanoseconds);
    simulated::machine.clientSize = {800, 540};
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(viewports, 3);
    EXPECT_EQ(viewportWidth, 800);
    EXPECT_EQ(viewportHeight, 540);
    EXPECT_DOUBLE_EQ(frameState.aspectRatio, 800.0 / 540.0);
}

TEST_F(MainLoop, KeepsItsAspectRatioWhileMinimised) {
    startWithProbe(InputMode::Live);
    iterateAfter(stepNanoseconds);
    simulated::machine.clientSize = {0, 0};
    iterateAfter(stepNanoseconds);
    EXPECT_DOUBLE_EQ(frameState.aspectRatio, 1920.0 / 1080.0);
    EXPECT_EQ(frameState.clientWidth, 1920u);
}

TEST_F(MainLoop, EscapeEndsItBeforeAnyStepRuns) {
    startWithProbe(InputMode::Live);
    press(keys::escape);
    EXPECT_EQ(iterateAfter(stepNanoseconds), LoopEnd::Escape);
    EXPECT_TRUE(probe.log.empty());
    EXPECT_EQ(simulated::machine.bufferSwaps, 0);
}

TEST_F(MainLoop, HiddenWindowEndsItAfterTheSwap) {
    startWithProbe(InputMode::Live);
    simulated::machine.windowVisible = false;
    EXPECT_EQ(iterateAfter(stepNanoseconds), LoopEnd::Hidden);
    EXPECT_EQ(stepsSoFar(), 1u);
    EXPECT_EQ(simulated::machine.bufferSwaps, 1);
}

TEST_F(MainLoop, LiveStepsOncePerIterationByTheRealTime) {
    startWithProbe(InputMode::Live);
    iterateAfter(20000000);
    EXPECT_DOUBLE_EQ(frameState.frameDelta, 0.02);
    iterateAfter(500000000);
    EXPECT_DOUBLE_EQ(frameState.frameDelta, 0.5);
    EXPECT_DOUBLE_EQ(frameState.elapsedTime, 0.52);
    EXPECT_EQ(stepsSoFar(), 2u);
}

TEST_F(MainLoop, AnyModeWithoutANameActsAsLive) {
    startWithProbe(static_cast<InputMode>(7));
    iterateAfter(20000000);
    EXPECT_DOUBLE_EQ(frameState.frameDelta, 0.02);
    EXPECT_EQ(stepsSoFar(), 1u);
}

TEST_F(MainLoop, RecordStepsOncePerIterationByASixtieth) {
    startWithProbe(InputMode::Record);
    iterateAfter(1000000);
    iterateAfter(2000000000);
    EXPECT_EQ(stepsSoFar(), 2u);
    EXPECT_EQ(frameState.frameDelta, 1.0 / 60.0);
    EXPECT_DOUBLE_EQ(frameState.elapsedTime, 2.001);
}

TEST_F(MainLoop, RoundsToNearestWhateverALibraryHasSet) {
    startWithProbe(InputMode::Live);
    static bool isDefault = false;
    probe.onUpdate = [] { isDefault = hasDefaultArithmetic(); };
    std::fesetround(FE_UPWARD);
    iterateAfter(stepNanoseconds);
    std::fesetround(FE_TONEAREST);
    EXPECT_TRUE(isDefault);
}

TEST_F(MainLoop, ReplayCarriesTimeThatIsTooShortForAStep) {
    startWithProbe(InputMode::Replay);
    iterateAfter(10000000); // 10 ms
    EXPECT_EQ(stepsSoFar(), 0u);
    EXPECT_EQ(simulated::machine.bufferSwaps, 1);
    iterateAfter(10000000); // 20 ms are due: one step, 3.33 ms carried
    EXPECT_EQ(stepsSoFar(), 1u);
    iterateAfter(13400000); // 16.73 ms are due
    EXPECT_EQ(stepsSoFar(), 2u);
}

TEST_F(MainLoop, ReplayStepsThreeTimesAtMostAndDropsTheSurplus) {
    startWithProbe(InputMode::Replay);
    iterateAfter(1000000000); // a stall of a second: 60 steps would be due
    EXPECT_EQ(stepsSoFar(), 3u);
    // What is carried is fmod(1, 1/60), which is not 57 steps.
    const double carried = std::fmod(1.0, 1.0 / 60.0);
    const double enough = 1.0 / 60.0 - carried;
    iterateAfter(static_cast<std::int64_t>(enough * 1.0e9) + 1000);
    EXPECT_EQ(stepsSoFar(), 4u);
    iterateAfter(1000000);
    EXPECT_EQ(stepsSoFar(), 4u);
}

TEST_F(MainLoop, ElapsedTimeIsTheSameForAllStepsOfAnIteration) {
    startWithProbe(InputMode::Replay);
    static double seen[2] = {};
    static int count = 0;
    count = 0;
    probe.onUpdate = [] { seen[count++ % 2] = frameState.elapsedTime; };
    iterateAfter(40000000);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(seen[0], 0.04);
    EXPECT_EQ(seen[1], 0.04);
}

std::vector<std::string> pixelLog;

void noteEnable(GLenum capability) {
    if (capability == GL_RASTERIZER_DISCARD) {
        pixelLog.emplace_back("off");
    }
}

void noteDisable(GLenum capability) {
    if (capability == GL_RASTERIZER_DISCARD) {
        pixelLog.emplace_back("on");
    }
}

void noteClear(GLbitfield) { pixelLog.emplace_back("clear"); }

class PixelsOfTheMainLoop : public MainLoop {
protected:
    void watchPixels(InputMode mode) {
        startWithProbe(mode);
        pixelLog.clear();
        glEnable = noteEnable;
        glDisable = noteDisable;
        glClear = noteClear;
        probe.onRender = [] { pixelLog.emplace_back("render"); };
    }
};

TEST_F(PixelsOfTheMainLoop, AreDiscardedInAllStepsButTheOneThatTheSwapShows) {
    watchPixels(InputMode::Replay);
    iterateAfter(3 * stepNanoseconds);
    const std::vector<std::string> expected = {"off",   "clear",  "render", "on",    "off",
                                               "clear", "render", "on",     "clear", "render"};
    EXPECT_EQ(pixelLog, expected);
}

TEST_F(PixelsOfTheMainLoop, StayOnInAReplayThatKeepsUp) {
    watchPixels(InputMode::Replay);
    iterateAfter(stepNanoseconds);
    EXPECT_EQ(pixelLog, (std::vector<std::string>{"clear", "render"}));
}

TEST_F(PixelsOfTheMainLoop, StayOnInALiveGameHoweverLateAStepIs) {
    watchPixels(InputMode::Live);
    iterateAfter(3 * stepNanoseconds);
    EXPECT_EQ(pixelLog, (std::vector<std::string>{"clear", "render"}));
}

TEST_F(PixelsOfTheMainLoop, AreBackOnWhenAStepEndsTheProgram) {
    watchPixels(InputMode::Replay);
    probe.onUpdate = [] { writable::screenState.currentScreen = nullptr; };
    EXPECT_THROW(iterateAfter(3 * stepNanoseconds), simulated::ProgramExit);
    EXPECT_EQ(pixelLog, (std::vector<std::string>{"off", "clear", "on"}));
}

} // namespace

} // namespace dunkman
