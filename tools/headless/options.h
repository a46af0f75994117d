#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/frame_state.h"
#include "platform/platform.h"
#include "screens/screen.h"

namespace dunkman::headless {

// Unusable arguments or an unusable key script; the runner prints what() and ends with status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    std::string dataFolder = "data";
    InputMode mode = InputMode::Replay;
    ScreenId screen = ScreenId::Loading;
    std::int64_t iterations = 600;
    std::int64_t stepNanoseconds = 16666667;
    platform::ClientSize size = {1920, 1080};
    std::string keysPath; // empty: no key is ever down
    bool traceKeys = false;
    bool traceWorld = false;
    bool traceDraws = false;
    std::string outputPath;   // empty: standard output
    std::string expectedPath; // a stored trace to hold the run against instead of printing it; empty: none
};

// Throws UsageError.
Options parseOptions(int argumentCount, const char* const* arguments);

extern const char* const usage;

} // namespace dunkman::headless
