#pragma once

#include <string>
#include <string_view>

// Supplied by the platform: the Windows one or the simulated one.
namespace dunkman {

// Hands a line to the debugger output. Adds the line end itself. Callable from any thread.
void debugText(std::string_view line);

// A programming or content fault that a developer wants to look at on the spot: writes `message` to the debugger
// output, then breaks into the debugger. When the developer resumes, the call returns; without a debugger it ends
// the game as fatal(message) does.
void debugBreak(const std::string& message);

} // namespace dunkman
