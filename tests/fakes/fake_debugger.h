#pragma once

#include <string>
#include <vector>

namespace dunkman {

// What debugText and debugBreak do in a test. Linked in place of a platform.
struct FakeDebugger {
    std::vector<std::string> lines;  // debugText
    std::vector<std::string> breaks; // debugBreak
    bool developerGoesOn = false;    // whether debugBreak returns; else it is fatal, as without a debugger
};

extern FakeDebugger fakeDebugger;

} // namespace dunkman
