#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

// The framework of the seven screens: exactly one is current, draws the whole frame and decides what follows.
namespace dunkman {

// The numbers are the order in which the screens are created.
enum class ScreenId : std::int32_t {
    Menu = 0,
    Game = 1,
    GameOver = 2,
    Pause = 3,
    Loading = 4,
    Intro = 5,
    Credits = 6,
};

inline constexpr std::size_t screenCount = 7;

class GameScreenBase {
public:
    virtual void enter() = 0;  // each time the screen becomes current
    virtual void update() = 0; // once a simulation step
    virtual void render() = 0; // after update; the frame buffer has just been cleared

protected:
    // Screens are never deleted through the base: destroyScreens frees each by its own type.
    ~GameScreenBase() = default;
};

struct ScreenState {
    std::unordered_map<ScreenId, GameScreenBase*> screenTable;
    GameScreenBase* currentScreen = nullptr; // null asks the program to end
};

extern const ScreenState& screenState;

// Whether that screen exists and is the current one.
bool isCurrent(ScreenId id);

// Makes the screen current and enters it, at once. The step in which this happens still renders the old screen.
void switchTo(ScreenId id);

// Creates all seven in ScreenId order. The game screen loads its scene while it is created.
void createScreens();

// Frees all seven and forgets the current one. The game leaves this to the end of the process; tests call it.
void destroyScreens();

// "Menu", "Game", … as in the code; "none" for a null screen.
std::string_view screenName(const GameScreenBase* screen);

// The id of a name as screenName gives it; false when there is none.
bool findScreen(std::string_view name, ScreenId& id);

} // namespace dunkman
