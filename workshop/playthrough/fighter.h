#pragma once

#include "workshop/playthrough/hands.h"

namespace dunkman::playthrough {

// How a fighter fights. `glide`: for how many seconds of its speed the hero moves on after a change of mind,
// by friction and by slow fingers.
struct Manner {
    bool careful = true;
    double glide = 0.125;
};

// One step of a fight with the weapon in hand. A careful fighter keeps out of reach, waits for openings and
// ducks away from a raised arm; a reckless one stands and hits.
Wish meleeWish(const Manner& manner);
Wish throwingWish(const Manner& manner);

// Runs away from whoever is near, along the beach and round them at its ends.
Wish kitingWish();

} // namespace dunkman::playthrough
