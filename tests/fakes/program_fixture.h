#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "app/frame.h"
#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"
#include "tests/fakes/small_data.h"

namespace dunkman {

// A screen that writes down what is asked of it, to stand in for a real one.
class ProbeScreen final : public GameScreenBase {
public:
    void enter() override { log.emplace_back("enter"); }
    void update() override;
    void render() override;

    std::vector<std::string> log;
    void (*onUpdate)() = nullptr;
    void (*onRender)() = nullptr;
};

// The whole program on the simulated machine over a small data directory. Each test starts and ends with every
// process-wide value as in a fresh process.
class ProgramFixture : public testing::Test {
protected:
    ProgramFixture();
    ~ProgramFixture() override;

    // Start-up in the given mode; the clock stands at 0, swaps count from here.
    void start(InputMode mode, ScreenId screen = ScreenId::Loading);

    // One loop iteration at a later time.
    LoopEnd iterateAfter(std::int64_t nanoseconds);

    // Iterations of 1/60 s (rounded up, so that each replays one step) until `screen` is current or `most` have run.
    int iterateUntil(ScreenId screen, int most);

    // Puts the probe in a screen's place in the table and makes it current. The real screen stays allocated and is
    // put back at the end.
    void installProbe(ScreenId id);

    static void press(std::int32_t virtualKey) { simulated::machine.keysDown.insert(virtualKey); }
    static void letGo(std::int32_t virtualKey) { simulated::machine.keysDown.erase(virtualKey); }

    // The `draw` and `view` lines of what `action` draws.
    static std::vector<std::string> drawLines(void (*action)());

    SmallData data;
    ProbeScreen probe;

private:
    ScreenId replacedId = ScreenId::Menu;
    GameScreenBase* replacedScreen = nullptr;
};

inline constexpr std::int64_t stepNanoseconds = 16666667; // just over 1/60 s

} // namespace dunkman
