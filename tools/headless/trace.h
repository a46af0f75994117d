#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "app/frame.h"
#include "tools/headless/options.h"

namespace dunkman::headless {

// Prints what the options ask for while steps run. Lines end in LF on every platform.
class Trace final : public FrameObserver {
public:
    // `output` is written in binary mode and stays the caller's.
    Trace(const Options& options, std::FILE* output);
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    void inputApplied() override;
    void updated() override;

    // The closing line. `reason` is one of iterations, quit, escape, hidden.
    void end(std::int64_t iterations, std::string_view reason);

private:
    void appendKeys();
    void flushIfLarge();
    void flush();

    const Options& options;
    std::FILE* output;
    std::string text; // printed but not yet written
    std::int64_t steps = 0;
    bool gameStepRuns = false; // the step in progress began on the game screen
};

} // namespace dunkman::headless
