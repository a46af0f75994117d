#pragma once

#include "tools/headless/key_script.h"
#include "tools/headless/options.h"
#include "tools/headless/trace.h"

namespace dunkman::headless {

// Runs the program on the simulated machine in the current directory and prints its trace to `output`. Throws
// FatalError when the game stops with a message.
void run(const Options& options, KeyScript keyScript, const TraceSink& output);

} // namespace dunkman::headless
