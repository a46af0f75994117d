#include <array>
#include <sstream>

#include "app/recording.h"
#include "app/reset.h"
#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "tests/fakes/program_fixture.h"
#include "tools/headless/runner.h"
#include "world/player.h"
#include "world/world.h"

// Keys that are down while the menu gives way to the game.
namespace dunkman {

namespace {

struct Switch {
    std::int32_t key;
    KeyState state; // as the menu's last step saw it
};

constexpr int menuSteps = 482;
constexpr int gameSteps = 20;

bool isDown(KeyState state) { return state == KeyState::Held || state == KeyState::Pressed; }

class HeldKeys : public ProgramFixture, public testing::WithParamInterface<Switch> {
protected:
    // From start-up through the menu to the step that has entered the game, with the key in the wanted state.
    void playMenu(InputMode mode, KeyState state = GetParam().state) {
        start(mode, ScreenId::Menu);
        writable::frameState.frameDelta = 1.0 / 60.0;
        for (int step = 0; step < menuSteps - 2; ++step) {
            screenState.currentScreen->update();
        }
        const std::int32_t key = GetParam().key;
        const bool wasDown = state == KeyState::Held || state == KeyState::Released;
        wasDown ? press(key) : letGo(key);
        runFrame();
        ASSERT_TRUE(isCurrent(ScreenId::Menu));
        isDown(state) ? press(key) : letGo(key);
        reference = &keyState(key);
        runFrame();
        ASSERT_TRUE(isCurrent(ScreenId::Game));
    }

    // What one step of the game made of the keys and of the hero.
    std::string step() {
        runFrame();
        std::ostringstream text;
        for (const auto& [key, state] : keyStates) {
            if (state != KeyState::Up) {
                text << std::hex << key << '=' << static_cast<int>(state) << ' ';
            }
        }
        const Player* hero = world.first<Player>();
        text << std::hexfloat << hero->position.x << ' ' << hero->position.y;
        return text.str();
    }

    std::vector<std::string> steps(int count) {
        std::vector<std::string> seen;
        for (int done = 0; done < count; ++done) {
            seen.push_back(step());
        }
        return seen;
    }

    KeyState* reference = nullptr;
};

TEST_P(HeldKeys, MeanNothingToAReplay) {
    data.write("recording.json5", R"([{"frame":99,"newKeyStates":[]}])");
    playMenu(InputMode::Replay);
    EXPECT_EQ(keyStates.size(), polledKeys.size()); // none was removed
    EXPECT_EQ(reference, &keyState(GetParam().key));
    for (const std::string& seen : steps(gameSteps)) {
        EXPECT_EQ(seen, "0x0p+0 0x0p+0");
    }
}

TEST_P(HeldKeys, AreAChangeOfTheFirstStepToARecording) {
    playMenu(InputMode::Record);
    const auto [key, state] = GetParam();
    EXPECT_EQ(*reference, KeyState::Up);
    step();
    if (isDown(state)) {
        ASSERT_EQ(recording.records.size(), 1u);
        EXPECT_EQ(recording.records[0].frame, 0u);
        EXPECT_EQ(recording.records[0].newKeyStates, (KeyChanges{{key, KeyState::Pressed}}));
    } else {
        EXPECT_TRUE(recording.records.empty());
    }
}

TEST_P(HeldKeys, AreRecordedSoThatTheReplayIsTheSameGame) {
    playMenu(InputMode::Record);
    std::vector<std::string> recorded = steps(gameSteps);
    letGo(GetParam().key);
    press(GetParam().key == keys::a ? keys::d : keys::a); // something happens in any case
    recorded.push_back(step());
    saveRecording();

    resetProgram();
    playMenu(InputMode::Replay, KeyState::Up);
    EXPECT_EQ(steps(gameSteps), std::vector<std::string>(recorded.begin(), recorded.end() - 1));
    runFrame();
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
}

TEST_P(HeldKeys, StayDownForALivePlayer) {
    playMenu(InputMode::Live);
    EXPECT_EQ(*reference, isDown(GetParam().state) ? KeyState::Held : KeyState::Up);
}

std::vector<Switch> everySwitch() {
    std::vector<Switch> switches;
    for (const std::int32_t key : polledKeys) {
        for (const KeyState state : {KeyState::Up, KeyState::Held, KeyState::Released, KeyState::Pressed}) {
            switches.push_back({key, state});
        }
    }
    return switches;
}

std::string switchName(const testing::TestParamInfo<Switch>& info) {
    constexpr std::array<const char*, 4> stateNames = {"Up", "Held", "Released", "Pressed"};
    std::ostringstream name;
    name << "Key" << std::hex << info.param.key << stateNames.at(static_cast<std::size_t>(info.param.state));
    return name.str();
}

INSTANTIATE_TEST_SUITE_P(AllKeysAndStates, HeldKeys, testing::ValuesIn(everySwitch()), switchName);

} // namespace

} // namespace dunkman
