#pragma once

#include <string>

namespace dunkman::playthrough {

// The plan of a player who takes the nearest flamingo and no risks, for the scene of the current directory: he stops
// before everybody who stands about, and behind each line that starts a fight, and goes on when all is quiet. He does
// not mean to leave the last fight.
std::string carefulPlan();

} // namespace dunkman::playthrough
