#include "screens/hold_timer.h"

#include "base/frame_state.h"

namespace dunkman {

void HoldTimer::start(double seconds) {
    holdElapsed = 0.0;
    holdActive = true;
    holdDuration = seconds;
}

bool HoldTimer::runOut() {
    if (!holdActive) {
        return true;
    }
    holdElapsed += frameState.frameDelta;
    if (holdElapsed >= holdDuration) {
        holdElapsed = 0.0;
        holdActive = false;
    }
    return false;
}

} // namespace dunkman
