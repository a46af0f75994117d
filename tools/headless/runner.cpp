#include "tools/headless/runner.h"

#include <string_view>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "platform/simulated/platform_sim.h"

namespace dunkman::headless {

namespace {

using simulated::machine;

// Answers the reason for the end of the loop; counts the iterations that began.
std::string_view runLoop(const Options& options, KeyScript& keyScript, std::int64_t& iterations) {
    while (iterations < options.iterations) {
        ++iterations;
        machine.clockNanoseconds = iterations * options.stepNanoseconds;
        keyScript.applyUntil(iterations, machine.keysDown);
        switch (runIteration()) {
        case LoopEnd::Escape:
            return "escape";
        case LoopEnd::Hidden:
            return "hidden";
        case LoopEnd::GoOn:
            break;
        }
    }
    return "iterations";
}

} // namespace

void run(const Options& options, KeyScript keyScript, const TraceSink& output) {
    resetProgram();
    machine.clientSize = options.size;

    startUp(options.mode, options.screen);
    Trace trace(options, output);
    std::int64_t iterations = 0;
    try {
        const std::string_view reason = runLoop(options, keyScript, iterations);
        shutDown();
        trace.end(iterations, reason);
    } catch (const simulated::ProgramExit&) {
        trace.end(iterations, "quit");
    } catch (const FatalError& fault) {
        endWithFault(fault);
    }
}

} // namespace dunkman::headless
