#include "screens/screen.h"

#include <array>
#include <string>

#include "base/debug_output.h"
#include "screens/credits_screen.h"
#include "screens/game_over_screen.h"
#include "screens/game_screen.h"
#include "screens/intro_screen.h"
#include "screens/loading_screen.h"
#include "screens/menu_screen.h"
#include "screens/pause_screen.h"
#include "screens/screen_writer.h"

namespace dunkman {

ScreenState writable::screenState;
constinit const ScreenState& screenState = writable::screenState;

namespace {

struct ScreenKind {
    ScreenId id;
    std::string_view name;
    GameScreenBase* (*create)();
    void (*destroy)(GameScreenBase*);
};

template <typename Screen> GameScreenBase* createScreen() { return new Screen; }

template <typename Screen> void destroyScreen(GameScreenBase* screen) { delete static_cast<Screen*>(screen); }

template <typename Screen> constexpr ScreenKind kindOf(ScreenId id, std::string_view name) {
    return {id, name, createScreen<Screen>, destroyScreen<Screen>};
}

constexpr std::array<ScreenKind, screenCount> screenKinds = {
    kindOf<MenuScreen>(ScreenId::Menu, "Menu"),
    kindOf<GameScreen>(ScreenId::Game, "Game"),
    kindOf<GameOverScreen>(ScreenId::GameOver, "GameOver"),
    kindOf<PauseScreen>(ScreenId::Pause, "Pause"),
    kindOf<LoadingScreen>(ScreenId::Loading, "Loading"),
    kindOf<IntroScreen>(ScreenId::Intro, "Intro"),
    kindOf<CreditsScreen>(ScreenId::Credits, "Credits"),
};

} // namespace

bool isCurrent(ScreenId id) {
    const auto entry = screenState.screenTable.find(id);
    return entry != screenState.screenTable.end() && screenState.currentScreen == entry->second;
}

void switchTo(ScreenId id) {
    writable::screenState.currentScreen = screenState.screenTable.at(id);
    debugText("screen " + std::string(screenName(screenState.currentScreen)));
    screenState.currentScreen->enter();
}

void createScreens() {
    for (const ScreenKind& kind : screenKinds) {
        GameScreenBase*& place =
            writable::screenState.screenTable[kind.id]; // first: then nobody loses the screen
        place = kind.create();
    }
}

void destroyScreens() {
    for (const ScreenKind& kind : screenKinds) {
        const auto entry = screenState.screenTable.find(kind.id);
        if (entry != screenState.screenTable.end()) {
            kind.destroy(entry->second);
        }
    }
    writable::screenState = {};
}

std::string_view screenName(const GameScreenBase* screen) {
    for (const ScreenKind& kind : screenKinds) {
        const auto entry = screenState.screenTable.find(kind.id);
        if (screen != nullptr && entry != screenState.screenTable.end() && entry->second == screen) {
            return kind.name;
        }
    }
    return "none";
}

bool findScreen(std::string_view name, ScreenId& id) {
    for (const ScreenKind& kind : screenKinds) {
        if (kind.name == name) {
            id = kind.id;
            return true;
        }
    }
    return false;
}

} // namespace dunkman
