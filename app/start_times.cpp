#include "app/start_times.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "base/debug_output.h"
#include "platform/platform.h"

namespace dunkman {

namespace {

struct Work {
    std::string_view name;
    std::int64_t nanoseconds = 0;
};

struct StartTimes {
    std::vector<Work> works;
    std::int64_t latest = 0; // platform clock, nanoseconds: the end of the last work
};

StartTimes startTimes;

} // namespace

void beginStartTimes() {
    startTimes.works = {{"process", platform::processAgeNanoseconds()}};
    startTimes.latest = platform::clockNanoseconds();
}

void noteStarted(std::string_view work) {
    const std::int64_t now = platform::clockNanoseconds();
    startTimes.works.push_back({work, now - startTimes.latest});
    startTimes.latest = now;
}

void tellStartTimes() {
    if (startTimes.works.empty()) {
        return;
    }
    noteStarted("frame");
    std::string line = "start";
    for (const Work& work : startTimes.works) {
        std::array<char, 32> milliseconds{};
        std::snprintf(milliseconds.data(), milliseconds.size(), "=%.1f",
                      static_cast<double>(work.nanoseconds) / 1.0e6);
        line.append(" ").append(work.name).append(milliseconds.data());
    }
    debugText(line);
    resetStartTimes();
}

void resetStartTimes() { startTimes = {}; }

} // namespace dunkman
