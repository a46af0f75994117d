#pragma once

#include <string_view>

// What start-up takes its time for, for the debugger output: one line, once the first frame has been shown.
//   start process=63.0 recording=2.1 window=210.4 context=95.0 shaders=12.3 pictures=40.7 warm-up=31.1 screen=0.2 music=850.1
//   frame=33.0
// Milliseconds, in the order of the work; together they are what a player waits for from the start of the process.
namespace dunkman {

// First of all. What the process did before is "process".
void beginStartTimes();

// `work` is done: it has taken the time since the one before. The text must outlive start-up.
void noteStarted(std::string_view work);

// The first frame has been shown: tells the line. Does nothing the next time.
void tellStartTimes();

void resetStartTimes();

} // namespace dunkman
