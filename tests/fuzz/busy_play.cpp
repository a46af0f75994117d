#include "tests/fuzz/busy_play.h"

#include <cstdint>

#include "app/main_loop.h"
#include "base/key_states.h"
#include "platform/simulated/platform_sim.h"
#include "screens/screen.h"

namespace dunkman {

void playBusily(int steps, const std::function<void()>& beforeStep) {
    constexpr std::int64_t stepNanoseconds = 16666667;
    for (int step = 0; step < steps && isCurrent(ScreenId::Game); ++step) {
        if (beforeStep) {
            beforeStep();
        }
        auto& down = simulated::machine.keysDown;
        down = {keys::d};
        if (step % 20 == 1) {
            down.insert(keys::z);
        }
        if (step % 5 == 2) {
            down.insert(keys::x);
        }
        simulated::machine.clockNanoseconds += stepNanoseconds;
        runIteration();
    }
}

} // namespace dunkman
