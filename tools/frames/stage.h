#pragma once

#include <cstdint>
#include <string>

#include "base/frame_state.h"
#include "platform/platform.h"
#include "screens/screen.h"

// The game on an off-screen machine, step by step, as dunkman-headless plays it: the same clock, the same keyboard.
namespace dunkman::frames {

struct Beginning {
    std::string data = "data"; // working directory of the run
    platform::ClientSize size = {1920, 1080};
    InputMode mode = InputMode::Replay;
    ScreenId screen = ScreenId::Loading; // entered after start-up
    std::string keysPath;                // a key script; empty: no key is ever down
};

// Starts the game and stays in its working directory. Once in a process, or after
// resetProgram of app/reset.h. Throws what the game and the key script throw.
void begin(const Beginning& beginning);

// Steps that have been run or begun, and so the number of the step that comes next.
std::int64_t stepsBegun();

// A turn of the loop in which `steps` steps are due; the last of them is drawn. Throws simulated::ProgramExit when the
// game ends itself.
void iterate(std::int64_t steps = 1);

// Plays on, undrawn, until `step` is the one that comes next.
void runUntil(std::int64_t step);

} // namespace dunkman::frames
