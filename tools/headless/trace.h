#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "app/frame.h"
#include "tools/headless/options.h"

namespace dunkman::headless {

// Takes the trace piece by piece; a piece is any number of bytes, not a line. Lines end in LF on every platform. What it
// throws ends the run.
using TraceSink = std::function<void(std::string_view text)>;

// Prints what the options ask for while steps run.
class Trace final : public FrameObserver {
public:
    Trace(const Options& options, TraceSink output);
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
    TraceSink output;
    std::string text; // printed but not yet handed on
    std::int64_t steps = 0;
    bool gameStepRuns = false; // the step in progress began on the game screen
};

} // namespace dunkman::headless
