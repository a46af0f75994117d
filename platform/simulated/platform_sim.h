#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "platform/platform.h"

// The machine that the headless runner, the tests and the benchmarks simulate. Everything here is set by them and
// read by the program through platform/platform.h.
namespace dunkman::simulated {

// Thrown where the real platform would end the process.
struct ProgramExit {
    int status;
};

struct Machine {
    std::int64_t clockNanoseconds = 0;
    std::int64_t processAgeNanoseconds = 0;
    std::set<std::int32_t> keysDown;    // virtual-key codes
    std::set<std::int32_t> keysPressed; // since last asked, whether they still are down or not
    platform::ClientSize clientSize = {1920, 1080};
    std::string programFolder; // empty: the working directory alone holds the data
    bool windowVisible = true;
    bool drawsInSoftware = false;
    int bufferSwaps = 0;
    std::vector<std::string> calls;      // start-up calls, in order, by name
    std::vector<std::string> debugLines; // what went to the debugger output
    std::vector<std::string> notices;    // what the player was shown, fatal messages apart
};

extern Machine machine;

} // namespace dunkman::simulated
