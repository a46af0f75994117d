#include "workshop/playthrough/author.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"
#include "tools/headless/runner.h"
#include "workshop/playthrough/pilot.h"

namespace dunkman::playthrough {

namespace {

using headless::KeyEvent;
using simulated::machine;

constexpr std::int64_t stepNanoseconds = 16666667;

void noteChanges(const std::set<std::int32_t>& before, const std::set<std::int32_t>& now,
                 std::int64_t iteration, std::vector<KeyEvent>& events) {
    for (const std::int32_t key : before) {
        if (!now.contains(key)) {
            events.push_back({iteration, key, false});
        }
    }
    for (const std::int32_t key : now) {
        if (!before.contains(key)) {
            events.push_back({iteration, key, true});
        }
    }
}

std::string lineOf(const KeyEvent& event) {
    char line[64];
    std::snprintf(line, sizeof line, "%lld 0x%02X %s\n", static_cast<long long>(event.iteration),
                  static_cast<unsigned>(event.virtualKey), event.down ? "down" : "up");
    return line;
}

void startGame(const Conditions& conditions) {
    resetProgram();
    startUp(InputMode::Record, ScreenId::Game);
    if (conditions.prepare) {
        conditions.prepare();
    }
}

// `fingers(iteration)`: the keys that are down in it. `planLine()`: where in the plan they are.
template <typename Fingers, typename PlanLine>
Performance performBy(const Fingers& fingers, const PlanLine& planLine, const Conditions& conditions,
                      const Watcher& watch) {
    Performance performance;
    while (performance.steps < conditions.longest) {
        const std::int64_t iteration = performance.steps + 1;
        machine.clockNanoseconds = iteration * stepNanoseconds;
        const std::set<std::int32_t>& wanted = fingers(iteration);
        noteChanges(machine.keysDown, wanted, iteration, performance.events);
        machine.keysDown = wanted;
        runIteration();
        ++performance.steps;
        if (!isCurrent(ScreenId::Game)) {
            performance.died = true;
            break;
        }
        if (watch && !watch(performance.steps - 1, planLine())) {
            break;
        }
    }
    return performance;
}

} // namespace

Performance perform(const std::vector<Intention>& plan, const Conditions& conditions, const Watcher& watch) {
    startGame(conditions);
    Pilot pilot(plan, conditions.reactionSteps);
    const auto fingers = [&pilot](std::int64_t) -> const std::set<std::int32_t>& {
        return pilot.keysForStep();
    };
    return performBy(
        fingers, [&pilot] { return pilot.line(); }, conditions, watch);
}

Performance perform(headless::KeyScript keys, const Conditions& conditions, const Watcher& watch) {
    startGame(conditions);
    std::set<std::int32_t> down;
    const auto fingers = [&](std::int64_t iteration) -> const std::set<std::int32_t>& {
        keys.applyUntil(iteration, down);
        return down;
    };
    return performBy(
        fingers, [] { return 0; }, conditions, watch);
}

std::string keyScriptOf(const Performance& performance) {
    std::string text;
    std::set<std::int32_t> down;
    for (const KeyEvent& event : performance.events) {
        if (performance.died && event.iteration >= performance.steps) {
            break;
        }
        text += lineOf(event);
        if (event.down) {
            down.insert(event.virtualKey);
        } else {
            down.erase(event.virtualKey);
        }
    }
    if (performance.died) {
        // The hero lets go of everything.
        for (const std::int32_t key : down) {
            text += lineOf({performance.steps, key, false});
        }
        if (down.empty()) {
            text += lineOf({performance.steps, keys::up, true});
        }
    }
    return text;
}

} // namespace dunkman::playthrough
