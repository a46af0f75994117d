#pragma once

namespace dunkman {

// The timer of the screens that leave by themselves. Its sums of frame times decide, not round figures: 480 steps of
// 1/60 s stay just below 8 s.
struct HoldTimer {
    double holdDuration = 0.0; // seconds
    bool holdActive = false;
    double holdElapsed = 0.0; // seconds

    void start(double seconds);

    // Advances by frameDelta while active. Returns true when it was not active any more, that is from the step
    // after the one in which the time ran out.
    bool runOut();
};

} // namespace dunkman
