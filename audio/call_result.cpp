#include "audio/call_result.h"

#include <array>
#include <cstdio>

namespace dunkman {

std::string describe(const CallResult& result, const char* consequence) {
    std::array<char, 16> code = {};
    std::snprintf(code.data(), code.size(), "0x%08X", static_cast<unsigned>(result.code));
    return std::string("audio: ") + result.call + " failed with " + code.data() + ": " + consequence;
}

} // namespace dunkman
