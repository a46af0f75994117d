#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman {

// A trace boiled down to a line for each step: its number, screen and mode, the count
// of the lines that belong to it, and a hash over all their bytes. Small enough to be kept, exact enough that a single
// bit shows, and the first line that differs names the step.
class TraceDigest {
public:
    // Any piece of the trace; lines may be split over pieces.
    void add(std::string_view text);

    // After the last piece.
    std::vector<std::string> finish();

private:
    void takeLine(std::string_view line);
    void closeStep();

    std::string partialLine;
    std::string stepName; // "step 12 Game", or empty before the first
    std::uint64_t hash = 0;
    std::size_t lineCount = 0;
    std::vector<std::string> lines;
};

} // namespace dunkman
