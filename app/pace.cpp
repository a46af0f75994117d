#include "app/pace.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "base/debug_output.h"
#include "platform/platform.h"
#include "screens/screen.h"

namespace dunkman {

namespace {

constexpr std::int64_t stepsPerLine = 600;
constexpr double nanosecondsPerSlot = 0.5e6;

// What one line tells.
struct Stretch {
    const GameScreenBase* screen = nullptr;
    std::string_view name;
    std::int64_t began = 0; // nanoseconds
    std::int64_t ended = 0; // nanoseconds
    std::int64_t from = 0;  // steps on the same screen before
    std::int64_t steps = 0;
    std::int64_t dropped = 0;
    std::int64_t frames = 0;
    std::array<std::int32_t, 512> slots{}; // frames by how long they took, half a millisecond each
};

Stretch stretch;

double millisecondsOf(std::size_t slot) { return static_cast<double>(slot) * nanosecondsPerSlot / 1.0e6; }

double medianMilliseconds() {
    std::int64_t before = 0;
    for (std::size_t slot = 0; slot < stretch.slots.size(); ++slot) {
        before += stretch.slots[slot];
        if (before * 2 >= stretch.frames) {
            return millisecondsOf(slot);
        }
    }
    return 0.0;
}

double longestMilliseconds() {
    const auto last =
        std::find_if(stretch.slots.rbegin(), stretch.slots.rend(), [](auto count) { return count != 0; });
    return last == stretch.slots.rend()
               ? 0.0
               : millisecondsOf(static_cast<std::size_t>(stretch.slots.rend() - last) - 1);
}

void tell() {
    std::array<char, 200> numbers{};
    std::snprintf(numbers.data(), numbers.size(),
                  " from=%lld steps=%lld dropped=%lld frames=%lld seconds=%.3f typical=%.1f longest=%.1f",
                  static_cast<long long>(stretch.from), static_cast<long long>(stretch.steps),
                  static_cast<long long>(stretch.dropped), static_cast<long long>(stretch.frames),
                  static_cast<double>(stretch.ended - stretch.began) / 1.0e9, medianMilliseconds(),
                  longestMilliseconds());
    debugText("pace " + std::string(stretch.name) + numbers.data());
}

void beginStretch(std::int64_t now, std::int64_t from) {
    stretch = Stretch();
    stretch.screen = screenState.currentScreen;
    stretch.name = screenName(screenState.currentScreen);
    stretch.began = stretch.ended = now;
    stretch.from = from;
}

} // namespace

void startPace() { beginStretch(platform::clockNanoseconds(), 0); }

void notePace(std::int64_t began, std::int64_t steps, std::int64_t dropped) {
    if (steps > 0) {
        stretch.ended = platform::clockNanoseconds();
        const double slot = static_cast<double>(stretch.ended - began) / nanosecondsPerSlot;
        ++stretch.slots[static_cast<std::size_t>(
            std::clamp(slot, 0.0, static_cast<double>(stretch.slots.size() - 1)))];
        stretch.steps += steps;
        stretch.dropped += dropped;
        ++stretch.frames;
    }
    const bool isSameScreen = stretch.screen == screenState.currentScreen;
    if (!isSameScreen || stretch.steps >= stepsPerLine) {
        tell();
        beginStretch(stretch.ended, isSameScreen ? stretch.from + stretch.steps : 0);
    }
}

void endPace() {
    if (stretch.frames > 0) {
        tell();
    }
    resetPace();
}

void resetPace() { stretch = Stretch(); }

} // namespace dunkman
