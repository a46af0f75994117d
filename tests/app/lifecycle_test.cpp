#include "app/lifecycle.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <string>

#include "app/reset.h"
#include "base/fatal.h"
#include "base/key_states.h"
#include "platform/simulated/audio_sim.h"
#include "render/image_table.h"
#include "render/renderer.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

class Lifecycle : public ProgramFixture {
protected:
    std::string startUpFault() {
        try {
            start(InputMode::Live);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "no fault";
    }
};

TEST_F(Lifecycle, StartsTheMachineInItsOrder) {
    start(InputMode::Live);
    EXPECT_EQ(simulated::machine.calls,
              (std::vector<std::string>{"switchDisplayMode", "openWindow", "hideCursor", "createGlContext",
                                        "loadGlFunctions", "setSwapInterval"}));
}

TEST_F(Lifecycle, FindsItsDataBesideItselfWhereverItIsStarted) {
    const std::filesystem::path folder = std::filesystem::current_path();
    std::filesystem::create_directory("elsewhere");
    std::filesystem::current_path("elsewhere");
    simulated::machine.programFolder = folder.string();
    EXPECT_EQ(startUpFault(), "no fault");
    EXPECT_EQ(std::filesystem::current_path(), folder);
}

TEST_F(Lifecycle, SaysThatItsDataIsMissingBeforeItTakesTheScreen) {
    std::filesystem::create_directory("elsewhere");
    std::filesystem::current_path("elsewhere");
    EXPECT_THAT(startUpFault(), testing::HasSubstr("elsewhere"));
    EXPECT_TRUE(simulated::machine.calls.empty());
}

TEST_F(Lifecycle, DoesNotTakeKeysThatWerePressedBeforeItBegan) {
    simulated::machine.keysPressed = {keys::escape, keys::x};
    start(InputMode::Live);
    EXPECT_EQ(iterateAfter(stepNanoseconds), LoopEnd::GoOn);
    EXPECT_EQ(findKeyState(keys::x), KeyState::Up);
}

TEST_F(Lifecycle, TakesKeysThatArePressedWhileItLoads) {
    start(InputMode::Live);
    simulated::machine.keysPressed = {keys::escape};
    EXPECT_EQ(iterateAfter(stepNanoseconds), LoopEnd::Escape);
}

TEST_F(Lifecycle, TakesAKeyThatHasBeenHeldSinceBeforeItBegan) {
    simulated::machine.keysDown = {keys::escape};
    start(InputMode::Live);
    EXPECT_EQ(iterateAfter(stepNanoseconds), LoopEnd::Escape);
}

TEST_F(Lifecycle, ShowsADarkPictureBeforeItLoadsAnything) {
    data.remove("drawable_basic.frag");
    EXPECT_NE(startUpFault(), "no fault");
    EXPECT_EQ(simulated::machine.bufferSwaps, 1);
}

TEST_F(Lifecycle, PreparesForSoftwareWhereTheProcessorDraws) {
    start(InputMode::Live);
    EXPECT_FALSE(isPreparedForSoftware());
    resetProgram();
    simulated::machine.drawsInSoftware = true;
    start(InputMode::Live);
    EXPECT_TRUE(isPreparedForSoftware());
}

TEST_F(Lifecycle, StartsOnTheLoadingScreen) {
    start(InputMode::Live);
    EXPECT_TRUE(isCurrent(ScreenId::Loading));
    EXPECT_EQ(screenState.screenTable.size(), screenCount);
}

TEST_F(Lifecycle, HasDrawnEveryTextureUnseenBeforeTheFirstFrame) {
    std::multiset<std::string> drawn;
    for (const std::string& line : drawLines([] { startUp(InputMode::Live); })) {
        const std::size_t name = line.find("image=") + 6;
        drawn.insert(line.substr(name, line.find(' ', name) - name));
    }
    for (const auto& [key, texture] : pictures.imageTable) {
        EXPECT_GE(drawn.count(key), 1u) << key;
    }
    EXPECT_EQ(drawn.count("glyph:A"), 1u);
    EXPECT_EQ(drawn.count("glyph:Z"), 1u);
    EXPECT_EQ(drawn.count("sunset"), 2u); // once as the backdrop is drawn, without depth writes
}

TEST_F(Lifecycle, TimeCountsFromTheEndOfStartUp) {
    simulated::machine.clockNanoseconds = 123456789;
    start(InputMode::Live);
    iterateAfter(1000000000);
    EXPECT_DOUBLE_EQ(frameState.elapsedTime, 1.0);
}

TEST_F(Lifecycle, ShutDownForgetsTheTextures) {
    start(InputMode::Live);
    EXPECT_FALSE(pictures.imageTable.empty());
    EXPECT_NE(pictures.glyphTable[25].name, 0u);
    shutDown();
    EXPECT_TRUE(pictures.imageTable.empty());
    EXPECT_EQ(pictures.glyphTable[25].name, 0u);
}

TEST_F(Lifecycle, ShutDownGivesTheDesktopBackLast) {
    start(InputMode::Live);
    simulated::machine.calls.clear();
    shutDown();
    EXPECT_EQ(simulated::machine.calls, (std::vector<std::string>{"restoreDesktop"}));
}

TEST_F(Lifecycle, ShutDownWaitsForTheSoundToEnd) {
    start(InputMode::Live);
    EXPECT_FALSE(simulated::isAudioFinished());
    shutDown();
    EXPECT_TRUE(simulated::isAudioFinished());
}

TEST_F(Lifecycle, AMissingTextureStopsItWithTheNameOfTheFile) {
    data.remove("AssetsCompressed/Font/Q.dds");
    EXPECT_NE(startUpFault().find("AssetsCompressed/Font/Q.dds"), std::string::npos);
}

TEST_F(Lifecycle, AMissingShaderStopsItWithTheNameOfTheFile) {
    data.remove("drawable_basic.frag");
    EXPECT_NE(startUpFault().find("drawable_basic.frag"), std::string::npos);
}

TEST_F(Lifecycle, AnUnknownRecipeStopsItWithItsNameWhicheverScreenComesFirst) {
    data.write("scene.json5", R"([{"recipe":"kraken"}])");
    EXPECT_NE(startUpFault().find("kraken"), std::string::npos);
}

TEST_F(Lifecycle, ASceneWithoutHeroStopsTheGameInItsFirstStep) {
    data.write("scene.json5", "[]");
    start(InputMode::Live, ScreenId::Game);
    EXPECT_THROW(iterateAfter(stepNanoseconds), FatalError);
}

} // namespace

} // namespace dunkman
