#pragma once

#include <cstdint>
#include <string>

namespace dunkman {

// How a call of the system ended. Codes are as Windows gives them: negative when read as a signed number is
// failure.
struct CallResult {
    const char* call = ""; // the call's name, for the debugger output
    std::int32_t code = 0;

    bool failed() const { return code < 0; }
};

// "audio: <call> failed with 0x<code>: <consequence>", for the debugger output.
std::string describe(const CallResult& result, const char* consequence);

} // namespace dunkman
