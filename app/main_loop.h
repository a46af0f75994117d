#pragma once

namespace dunkman {

// Whether and why the loop ends after an iteration.
enum class LoopEnd {
    GoOn,
    Escape, // Escape is down: no step ran
    Hidden, // the window stopped being visible
};

// Takes the start sample of the clock. Once, when start-up is done.
void startLoop();

// One iteration: Escape test, window messages, client size, clock, the steps that are due by inputMode, swap.
LoopEnd runIteration();

void resetMainLoop();

} // namespace dunkman
