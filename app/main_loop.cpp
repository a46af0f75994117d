#include "app/main_loop.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "app/frame.h"
#include "app/pace.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "platform/platform.h"
#include "render/gl.h"

namespace dunkman {

namespace {

constexpr double fixedStep = 1.0 / 60.0;     // seconds
constexpr double maxStepsPerIteration = 3.0; // Replay slows down rather than spiral
constexpr double nanosecondsPerSecond = 1.0e9;

std::int64_t startSample = 0;  // nanoseconds
double previousTime = 0.0;     // seconds since the start sample
double carriedRemainder = 0.0; // seconds that Replay has not yet simulated

void followClientSize() {
    const platform::ClientSize size = platform::clientSize();
    if (size.width == 0 || size.height == 0) {
        return; // minimised: 0 / 0 as aspect ratio would reach the arenas through the view rectangle
    }
    if (size.width != clientWidth || size.height != clientHeight) {
        clientWidth = size.width;
        clientHeight = size.height;
        aspectRatio = static_cast<double>(clientWidth) / static_cast<double>(clientHeight);
        glViewport(0, 0, static_cast<GLsizei>(clientWidth), static_cast<GLsizei>(clientHeight));
    }
}

std::int64_t stepsDue(double seconds) {
    return static_cast<std::int64_t>(std::min(std::floor(seconds / frameDelta), maxStepsPerIteration));
}

// While it lives, clearing and drawing leave no pixels behind; every other effect of a call stays.
class PixelsDiscarded {
public:
    PixelsDiscarded() { glEnable(GL_RASTERIZER_DISCARD); }
    ~PixelsDiscarded() { glDisable(GL_RASTERIZER_DISCARD); }
    PixelsDiscarded(const PixelsDiscarded&) = delete;
    PixelsDiscarded& operator=(const PixelsDiscarded&) = delete;
};

// What a turn of the loop ran, and what it let fall because it was too late.
struct Steps {
    std::int64_t run = 0;
    std::int64_t dropped = 0;
};

Steps runReplaySteps(double now) {
    frameDelta = fixedStep;
    const double due = now - previousTime + carriedRemainder;
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
    carriedRemainder = std::fmod(due, frameDelta);
    previousTime = now;
    steps.dropped = static_cast<std::int64_t>(std::floor(due / frameDelta)) - steps.run;
    return steps;
}

Steps runDueSteps(double now) {
    switch (inputMode) {
    case InputMode::Record:
        frameDelta = fixedStep;
        runFrame();
        return {.run = 1};
    case InputMode::Replay:
        return runReplaySteps(now);
    case InputMode::Live:
    default:
        frameDelta = now - previousTime;
        runFrame();
        previousTime = now;
        return {.run = 1};
    }
}

} // namespace

void startLoop() {
    startSample = platform::clockNanoseconds();
    previousTime = 0.0;
    carriedRemainder = 0.0;
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
    const double now = static_cast<double>(sample - startSample) / nanosecondsPerSecond;
    elapsedTime = now;
    const Steps steps = runDueSteps(now);
    platform::swapBuffers();
    notePace(sample, steps.run, steps.dropped);
    return platform::isWindowVisible() ? LoopEnd::GoOn : LoopEnd::Hidden;
}

void resetMainLoop() {
    startSample = 0;
    previousTime = 0.0;
    carriedRemainder = 0.0;
    resetPace();
}

} // namespace dunkman
