#include "tests/fakes/fake_debugger.h"

#include "base/debug_output.h"
#include "base/fatal.h"

namespace dunkman {

FakeDebugger fakeDebugger;

void debugText(std::string_view line) { fakeDebugger.lines.emplace_back(line); }

void debugBreak(const std::string& message) {
    fakeDebugger.breaks.push_back(message);
    if (!fakeDebugger.developerGoesOn) {
        fatal(message);
    }
}

} // namespace dunkman
