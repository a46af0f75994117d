#pragma once

#include "tools/inspect/level_files.h"

namespace dunkman::inspect {

// Starts the game up on the simulated machine, all files being sound so far, and looks at the level that it made: what
// stops it even so, and scripted fights that would stop it when the hero comes. Resets the program before and after.
void runLevel(const LevelFiles& files, Faults& faults);

} // namespace dunkman::inspect
