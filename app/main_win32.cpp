#include <windows.h>

#include <exception>

#include "app/lifecycle.h"
#include "app/process_end.h"
#include "base/fatal.h"
#include "platform/platform.h"
#include "platform/platform_win32.h"

// The build compiles this file once for each variant of the program, with its input mode.
#ifndef DUNKMAN_INPUT_MODE
#define DUNKMAN_INPUT_MODE Replay
#endif

// Drivers of laptops with two graphics chips look for these two words in the program and take the stronger chip.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" {
extern __declspec(dllexport) const DWORD NvOptimusEnablement = 1;
extern __declspec(dllexport) const int AmdPowerXpressRequestHighPerformance = 1;
}
// NOLINTEND(readability-identifier-naming)

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    dunkman::platform::useRealPixels();
    try {
        dunkman::runProgram(dunkman::InputMode::DUNKMAN_INPUT_MODE);
    } catch (const std::exception& error) {
        dunkman::platform::showFatalMessage(dunkman::faultMessage(error));
        // Not by returning: the audio thread still reads objects that static destruction would take away.
        dunkman::endProcess(1);
    }
    return 0;
}
