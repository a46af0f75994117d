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

namespace dunkman {

std::unordered_map<ScreenId, GameScreenBase*> screenTable;
GameScreenBase* currentScreen = nullptr;

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

void switchTo(ScreenId id) {
    currentScreen = screenTable[id];
    debugText("screen " + std::string(screenName(currentScreen)));
    currentScreen->enter();
}

void createScreens() {
    for (const ScreenKind& kind : screenKinds) {
        screenTable[kind.id] = kind.create();
    }
}

void destroyScreens() {
    for (const ScreenKind& kind : screenKinds) {
        const auto entry = screenTable.find(kind.id);
        if (entry != screenTable.end()) {
            kind.destroy(entry->second);
        }
    }
    screenTable.clear();
    currentScreen = nullptr;
}

std::string_view screenName(const GameScreenBase* screen) {
    for (const ScreenKind& kind : screenKinds) {
        const auto entry = screenTable.find(kind.id);
        if (screen != nullptr && entry != screenTable.end() && entry->second == screen) {
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
