#include "tests/audio/debug_lines.h"

#include <mutex>
#include <utility>

#include "base/debug_output.h"

namespace dunkman {

namespace {

std::mutex linesMutex;
std::vector<std::string> lines;

} // namespace

void debugText(std::string_view line) {
    const std::lock_guard guard(linesMutex);
    lines.emplace_back(line);
}

namespace testing {

std::vector<std::string> takeDebugLines() {
    const std::lock_guard guard(linesMutex);
    return std::exchange(lines, {});
}

} // namespace testing

} // namespace dunkman
