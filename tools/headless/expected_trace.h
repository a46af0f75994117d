#pragma once

#include <cstdint>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace dunkman::headless {

// The trace took another way than the expected one; what() names the step, the object or call, the field and both
// values.
class TraceDiffers : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A stored trace that a run is held against, line by line, while it goes on. Reads the file as it goes, so a trace may
// be larger than memory.
class ExpectedTrace {
public:
    // Throws UsageError when the file cannot be read.
    explicit ExpectedTrace(const std::string& path);

    // Takes the next piece of the actual trace, any number of bytes. Throws TraceDiffers at the first line that differs.
    void compare(std::string_view text);

    // To be called after the last piece. Throws TraceDiffers when the stored trace goes on.
    void finish();

private:
    void compareLine(const std::string& actual);
    std::string describePlace(std::string_view line) const;

    std::string path;
    std::ifstream file;
    std::string partialLine;                               // of the actual trace, its end not seen yet
    std::string stepName;                                  // "step 12", or "before the first step"
    std::map<std::string, std::int64_t, std::less<>> seen; // lines of this step, by what they are about
};

} // namespace dunkman::headless
