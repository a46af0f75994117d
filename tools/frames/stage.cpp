#include "tools/frames/stage.h"

#include <filesystem>

#include "app/frame.h"
#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "platform/simulated/platform_sim.h"
#include "render/discard.h"
#include "tools/headless/key_script.h"

namespace dunkman::frames {

namespace {

using simulated::machine;

// Counts steps by looking on.
class StepCounter final : public FrameObserver {
public:
    std::int64_t begun = 0;
    void inputApplied() override { ++begun; }
};

StepCounter counter;
headless::KeyScript keyScript;
std::int64_t iterations = 0;

} // namespace

void begin(const Beginning& beginning) {
    counter = {};
    keyScript = {};
    iterations = 0;
    if (!beginning.keysPath.empty()) {
        keyScript = headless::KeyScript::readFile(beginning.keysPath);
    }
    std::filesystem::current_path(beginning.data);
    machine.clientSize = beginning.size;
    startUp(beginning.mode, beginning.screen);
    frameObserver = &counter;
}

std::int64_t stepsBegun() { return counter.begun; }

void iterate(std::int64_t steps) {
    constexpr std::int64_t longStep = 16666667; // nanoseconds: just over 1/60 s
    machine.clockNanoseconds += steps * longStep;
    keyScript.applyUntil(++iterations, machine.keysDown);
    runIteration();
}

void runUntil(std::int64_t step) {
    const PixelsDiscarded unseen;
    while (counter.begun < step) {
        iterate();
    }
}

} // namespace dunkman::frames
