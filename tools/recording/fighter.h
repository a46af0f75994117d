#pragma once

#include "tools/recording/hands.h"

namespace dunkman::recording {

// One step of a fight with the weapon in hand. A careful fighter keeps out of reach, waits for openings and ducks
// away from a raised arm; a reckless one stands and hits.
Wish meleeWish(bool careful);
Wish throwingWish(bool careful);

// Runs away from whoever is near, along the beach and round them at its ends.
Wish kitingWish();

} // namespace dunkman::recording
