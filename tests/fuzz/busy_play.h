#pragma once

#include <functional>

namespace dunkman {

// Goes on with the game that is under way, at most so many steps of 1/60 s, with a hand on the keyboard that walks to the
// right, takes and strikes. Ends early when another screen comes; calls `beforeStep`, where there is one, before each.
void playBusily(int steps, const std::function<void()>& beforeStep = {});

} // namespace dunkman
