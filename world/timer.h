#pragma once

namespace dunkman {

// Runs once from where `elapsed` stands until `duration`, then stops and rewinds. Seconds.
struct Timer {
    double duration = 0.0;
    bool running = false;
    double elapsed = 0.0;

    // Does nothing while the timer is not running.
    void advance(double seconds) {
        if (running) {
            elapsed += seconds;
            if (elapsed >= duration) {
                elapsed = 0.0;
                running = false;
            }
        }
    }
};

} // namespace dunkman
