#include "audio/music.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "screens/intro_screen.h"
#include "screens/menu_screen.h"
#include "tests/fakes/program_fixture.h"

namespace dunkman {

namespace {

class ScreenFlow : public ProgramFixture {
protected:
    // Updates of the current screen, a sixtieth of a second each, until another is current; `most` when none is.
    static int updatesUntilSwitch(int most) {
        writable::frameState.frameDelta = 1.0 / 60.0;
        GameScreenBase* const first = screenState.currentScreen;
        for (int updates = 1; updates <= most; ++updates) {
            screenState.currentScreen->update();
            if (screenState.currentScreen != first) {
                return updates;
            }
        }
        return most;
    }

    void enter(ScreenId id) {
        start(InputMode::Live);
        switchTo(id);
    }
};

TEST_F(ScreenFlow, HasSevenScreensThatKeepTheirNumbers) {
    start(InputMode::Live);
    const std::vector<std::string_view> names = {"Menu",    "Game",  "GameOver", "Pause",
                                                 "Loading", "Intro", "Credits"};
    for (std::int32_t id = 0; id < 7; ++id) {
        EXPECT_EQ(screenName(screenState.screenTable.at(static_cast<ScreenId>(id))),
                  names[static_cast<std::size_t>(id)]);
    }
    EXPECT_EQ(screenName(nullptr), "none");
}

TEST_F(ScreenFlow, LoadingLeavesAtFiveAndAHalfSecondsNotBefore) {
    enter(ScreenId::Loading);
    writable::frameState.elapsedTime = 5.49;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Loading));
    writable::frameState.elapsedTime = 5.5;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Intro));
}

TEST_F(ScreenFlow, IntroIsSkippedWithXOrSpace) {
    for (const std::int32_t key : {keys::x, keys::space}) {
        enter(ScreenId::Intro);
        screenState.currentScreen->update();
        EXPECT_TRUE(isCurrent(ScreenId::Intro));
        keyState(key) = KeyState::Pressed;
        screenState.currentScreen->update();
        EXPECT_TRUE(isCurrent(ScreenId::Menu));
        clearKeyStates();
        destroyScreens();
    }
}

TEST_F(ScreenFlow, IntroLeavesFromRenderAfterFortySixSeconds) {
    enter(ScreenId::Intro);
    auto& intro = static_cast<IntroScreen&>(*screenState.currentScreen);
    intro.storyTime = 46.0;
    intro.render();
    EXPECT_TRUE(isCurrent(ScreenId::Intro));
    intro.storyTime = 46.001;
    intro.render();
    EXPECT_TRUE(isCurrent(ScreenId::Menu));
}

TEST_F(ScreenFlow, IntroKeepsItsClockAcrossVisits) {
    enter(ScreenId::Intro);
    auto& intro = static_cast<IntroScreen&>(*screenState.currentScreen);
    intro.storyTime = 12.0;
    switchTo(ScreenId::Menu);
    switchTo(ScreenId::Intro);
    EXPECT_EQ(intro.storyTime, 12.0);
}

// 480 sixtieths stay just below eight seconds; the step after the one in which time runs out acts.
TEST_F(ScreenFlow, MenuLeavesInItsFourHundredAndEightySecondUpdate) {
    enter(ScreenId::Menu);
    EXPECT_EQ(updatesUntilSwitch(1000), 482);
    EXPECT_TRUE(isCurrent(ScreenId::Game));
}

TEST_F(ScreenFlow, MenuStartsItsTimeAnewOnEveryVisit) {
    enter(ScreenId::Menu);
    writable::frameState.frameDelta = 1.0 / 60.0;
    for (int update = 0; update < 300; ++update) {
        screenState.currentScreen->update();
    }
    switchTo(ScreenId::Menu);
    EXPECT_EQ(updatesUntilSwitch(1000), 482);
}

TEST_F(ScreenFlow, MenuReadsNoKeys) {
    enter(ScreenId::Menu);
    for (const std::int32_t key : polledKeys) {
        keyState(key) = KeyState::Pressed;
    }
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Menu));
}

TEST_F(ScreenFlow, GameOverLeavesForTheCreditsInItsSixHundredAndFirstUpdate) {
    enter(ScreenId::GameOver);
    EXPECT_EQ(updatesUntilSwitch(1000), 601);
    EXPECT_TRUE(isCurrent(ScreenId::Credits));
}

TEST_F(ScreenFlow, CreditsEndTheProgramInTheirSixHundredAndFirstUpdate) {
    enter(ScreenId::Credits);
    EXPECT_EQ(updatesUntilSwitch(1000), 601);
    EXPECT_EQ(screenState.currentScreen, nullptr);
}

TEST_F(ScreenFlow, GameOverReadsNoKeys) {
    enter(ScreenId::GameOver);
    keyState(keys::x) = KeyState::Pressed;
    keyState(keys::escape) = KeyState::Pressed;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
}

TEST_F(ScreenFlow, PauseGoesToTheGameWithXAndToTheMenuWithEscape) {
    enter(ScreenId::Pause);
    keyState(keys::x) = KeyState::Pressed;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Game));
    clearKeyStates();
    switchTo(ScreenId::Pause);
    keyState(keys::escape) = KeyState::Pressed;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Menu));
}

TEST_F(ScreenFlow, PauseLooksForEscapeWithoutEnteringIt) {
    enter(ScreenId::Pause);
    screenState.currentScreen->update();
    EXPECT_EQ(keyStates.count(keys::escape), 0u);
}

TEST_F(ScreenFlow, MusicIsPickedByIntroAndMenuAlone) {
    start(InputMode::Live);
    EXPECT_EQ(music.musicSelection, MusicSelection::None);
    switchTo(ScreenId::Intro);
    EXPECT_EQ(music.musicSelection, MusicSelection::Intro);
    switchTo(ScreenId::Menu);
    EXPECT_EQ(music.musicSelection, MusicSelection::Game);
    for (const ScreenId id : {ScreenId::Game, ScreenId::GameOver, ScreenId::Credits, ScreenId::Pause}) {
        switchTo(id);
        EXPECT_EQ(music.musicSelection, MusicSelection::Game);
    }
}

TEST_F(ScreenFlow, TheWholeProductionRunsByItselfToTheEnd) {
    data.write("recording.json5", R"([{"frame":30,"newKeyStates":[]}])");
    start(InputMode::Replay);
    std::vector<std::string> visited;
    try {
        for (int iteration = 0; iteration < 10000; ++iteration) {
            const std::string name(screenName(screenState.currentScreen));
            if (visited.empty() || visited.back() != name) {
                visited.push_back(name);
            }
            iterateAfter(stepNanoseconds);
        }
        FAIL() << "the program does not end";
    } catch (const simulated::ProgramExit& exit) {
        EXPECT_EQ(exit.status, 0);
    }
    EXPECT_EQ(visited, (std::vector<std::string>{"Loading", "Intro", "Menu", "Game", "GameOver", "Credits"}));
}

} // namespace

} // namespace dunkman
