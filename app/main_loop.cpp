#include "app/main_loop.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "app/frame.h"
#include "app/pace.h"
#include "base/frame_state_writer.h"
#include "base/key_states.h"
#include "platform/platform.h"
#include "render/discard.h"
#include "render/gl.h"

namespace dunkman {

namespace {

constexpr double fixedStep = 1.0 / 60.0;     // seconds
constexpr double maxStepsPerIteration = 3.0; // Replay slows down rather than spiral
constexpr double nanosecondsPerSecond = 1.0e9;

struct LoopClock {
    std::int64_t startSample = 0;  // nanoseconds
    double previousTime = 0.0;     // seconds since the start sample
    double carriedRemainder = 0.0; // seconds that Replay has not yet simulated
};

LoopClock loopClock;

void followClientSize() {
    const platform::ClientSize size = platform::clientSize();
    if (size.width == 0 || size.height == 0) {
        return; // minimised: 0 / 0 as aspect ratio would reach the arenas through the view rectangle
    }
    if (size.width != frameState.clientWidth || size.height != frameState.clientHeight) {
        writable::frameState.clientWidth = size.width;
        writable::frameState.clientHeight = size.height;
        writable::frameState.aspectRatio =
            static_cast<double>(frameState.clientWidth) / static_cast<double>(frameState.clientHeight);
        glViewport(0, 0, static_cast<GLsizei>(frameState.clientWidth),
                   static_cast<GLsizei>(frameState.clientHeight));
    }
}

std::int64_t stepsDue(double seconds) {
    return static_cast<std::int64_t>(
        std::min(std::floor(seconds / frameState.frameDelta), maxStepsPerIteration));
}

struct Steps {
    std::int64_t run = 0;
    std::int64_t dropped = 0;
};

Steps runReplaySteps(double now) {
    writable::frameState.frameDelta = fixedStep;
    const double due = now - loopClock.previousTime + loopClock.carriedRemainder;
    Steps steps;
    for (; steps.run < stepsDue(due); ++steps.run) {
        const bool isLast = steps.run + 1 >= stepsDue(due);
        if (isLast) {
            runFrame();
        } else {
            // The next step clears what this one would draw before any swap can show it.
            const PixelsDiscarded unseen;
            runFrame();
        }
    }
    // Not the time left over by the steps that ran: what is due beyond three steps is dropped on purpose.
    loopClock.carriedRemainder = std::fmod(due, frameState.frameDelta);
    loopClock.previousTime = now;
    steps.dropped = static_cast<std::int64_t>(std::floor(due / frameState.frameDelta)) - steps.run;
    return steps;
}

Steps runDueSteps(double now) {
    switch (frameState.inputMode) {
    case InputMode::Record:
        writable::frameState.frameDelta = fixedStep;
        runFrame();
        return {.run = 1};
    case InputMode::Replay:
        return runReplaySteps(now);
    case InputMode::Live:
    default:
        writable::frameState.frameDelta = now - loopClock.previousTime;
        runFrame();
        loopClock.previousTime = now;
        return {.run = 1};
    }
}

} // namespace

void startLoop() {
    loopClock = {.startSample = platform::clockNanoseconds()};
    startPace();
}

LoopEnd runIteration() {
    if (platform::isKeyDown(keys::escape)) {
        return LoopEnd::Escape;
    }
    platform::resetArithmetic();
    platform::drainMessages();
    followClientSize();
    const std::int64_t sample = platform::clockNanoseconds();
    const double now = static_cast<double>(sample - loopClock.startSample) / nanosecondsPerSecond;
    writable::frameState.elapsedTime = now;
    const Steps steps = runDueSteps(now);
    platform::swapBuffers();
    notePace(sample, steps.run, steps.dropped);
    return platform::isWindowVisible() ? LoopEnd::GoOn : LoopEnd::Hidden;
}

void resetMainLoop() {
    loopClock = {};
    resetPace();
}

} // namespace dunkman
