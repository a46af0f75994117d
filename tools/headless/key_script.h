#pragma once

#include <cstdint>
#include <istream>
#include <set>
#include <string>
#include <vector>

namespace dunkman::headless {

struct KeyEvent {
    std::int64_t iteration = 0; // from this main-loop iteration on, counted from 1
    std::int32_t virtualKey = 0;
    bool down = false;
};

// A simulated keyboard: lines "ITERATION CODE down" or "ITERATION CODE up", CODE in hexadecimal (0x57); "#" starts a
// comment. Events apply by iteration, those of one iteration in the order of the file.
class KeyScript {
public:
    // Throws UsageError "NAME:LINE: message" for a malformed line.
    static KeyScript read(std::istream& text, const std::string& name);
    static KeyScript readFile(const std::string& path);

    // Presses and releases what is due by the given iteration. Iterations are asked for in ascending order.
    void applyUntil(std::int64_t iteration, std::set<std::int32_t>& keysDown);

private:
    std::vector<KeyEvent> events; // ascending by iteration
    std::size_t next = 0;
};

} // namespace dunkman::headless
