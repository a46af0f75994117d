#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/headless/key_script.h"
#include "workshop/playthrough/plan.h"

namespace dunkman::playthrough {

// A game played by a pilot on the simulated machine.
struct Performance {
    std::vector<headless::KeyEvent> events; // ascending by iteration
    std::int64_t steps = 0;                 // on the game screen, the one in which the hero dies included
    bool died = false;
};

// Called after each step on the game screen, with the world as it then stands; answers false to stop.
using Watcher = std::function<bool(std::int64_t step, int planLine)>;

struct Conditions {
    std::int64_t longest = 4 * 60 * 60; // steps
    int reactionSteps = 0;
    std::function<void()> prepare; // may change the world before the first step
};

// Plays the scene of the current directory by the plan. Leaves the world as the game ended, until
// resetProgram.
Performance perform(const std::vector<Intention>& plan, const Conditions& conditions = {},
                    const Watcher& watch = {});

// The same by a key script, which knows no lines of a plan: the watcher is told 0.
Performance perform(headless::KeyScript keys, const Conditions& conditions = {}, const Watcher& watch = {});

// The performance as a key script. A replay ends in the step of its last change, so the script has none after
// the hero's death and always one in the very step of it: every step before is then shown.
std::string keyScriptOf(const Performance& performance);

} // namespace dunkman::playthrough
