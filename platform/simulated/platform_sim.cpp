#include "platform/simulated/platform_sim.h"

#include <cfenv>

#include "base/debug_output.h"
#include "base/fatal.h"
#include "platform/simulated/gl_sim.h"

namespace dunkman {

namespace simulated {

Machine machine;

} // namespace simulated

void debugText(std::string_view line) { simulated::machine.debugLines.emplace_back(line); }

// Nobody debugs a simulated run, so every break ends it.
void debugBreak(const std::string& message) {
    debugText(message);
    fatal(message);
}

namespace platform {

using simulated::machine;

void resetMachine() {
    machine = {};
    simulated::resetGl();
}

std::string programFolder() { return machine.programFolder; }
std::int64_t processAgeNanoseconds() { return machine.processAgeNanoseconds; }
void switchDisplayMode() { machine.calls.emplace_back("switchDisplayMode"); }
void openWindow() { machine.calls.emplace_back("openWindow"); }
void hideCursor() { machine.calls.emplace_back("hideCursor"); }
void createGlContext() { machine.calls.emplace_back("createGlContext"); }

void loadGlFunctions() {
    machine.calls.emplace_back("loadGlFunctions");
    simulated::loadGlFunctions();
}

void restoreDesktop() { machine.calls.emplace_back("restoreDesktop"); }

void showNotice(const std::string& message) { machine.notices.push_back(message); }

// Nobody else's library is loaded here, so this need not reach further than what a test may set.
void resetArithmetic() { std::fesetround(FE_TONEAREST); }

void setSwapInterval() { machine.calls.emplace_back("setSwapInterval"); }
bool isWindowVisible() { return machine.windowVisible; }

bool isKeyDown(std::int32_t virtualKey) {
    const bool wasPressed = machine.keysPressed.erase(virtualKey) != 0;
    return machine.keysDown.contains(virtualKey) || wasPressed;
}

void drainMessages() {}
ClientSize clientSize() { return machine.clientSize; }
std::int64_t clockNanoseconds() { return machine.clockNanoseconds; }
bool drawsInSoftware() { return machine.drawsInSoftware; }

void swapBuffers() { ++machine.bufferSwaps; }
void keepPicture() { simulated::keepPicture(); }
bool bringPictureBack() { return simulated::bringPictureBack(); }

void exitProcess(int status) { throw simulated::ProgramExit{status}; }

} // namespace platform

} // namespace dunkman
