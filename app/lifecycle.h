#pragma once

#include <exception>

#include "base/frame_state.h"
#include "screens/screen.h"

namespace dunkman {

// Everything before the loop, in its fixed order, from the choice of the working directory (app/data_folder.h) and the
// recording to the start sample of the clock. `mode` is the program's compiled-in input mode, `firstScreen` the screen
// that is entered.
void startUp(InputMode mode, ScreenId firstScreen = ScreenId::Loading);

// What follows the loop: keeps an unfinished recording and says so at the end; GPU resources, then audio. Not run when a
// screen ends the program (app/process_end.h).
void shutDown();

// The end of a run that a fault stops: keeps an unfinished recording, and leaves as a FatalError that says where it is.
[[noreturn]] void endWithFault(const std::exception& fault);

// The whole program: start-up, the loop until Escape or a hidden window, shut-down; faults end it as above.
void runProgram(InputMode mode);

} // namespace dunkman
