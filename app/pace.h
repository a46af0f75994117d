#pragma once

#include <cstdint>

// Whether the show keeps pace, for the debugger output: a line for each screen, on a long one every ten seconds.
//   pace Game from=600 steps=600 dropped=0 frames=200 seconds=10.000 typical=31.5 longest=44.0
// `from` is the first step of the line on its screen. Steps are dropped when more than three are due at once. A frame is
// a turn of the loop in which a step ran; typical (the median) and longest are milliseconds that one took, swap included.
namespace dunkman {

// When the loop begins.
void startPace();

// After the swap of a turn that began at `began` (platform clock, nanoseconds).
void notePace(std::int64_t began, std::int64_t steps, std::int64_t dropped);

// Tells what is not told yet. Before the program ends.
void endPace();

void resetPace();

} // namespace dunkman
