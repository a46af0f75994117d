#pragma once

#include <cstdint>

namespace dunkman {

// The game's one source of chance. It starts from the same state in every run and is never reseeded, so a
// given sequence of arenas makes the same choices every time. Only arenas draw from it.
extern std::uint64_t randomState;

// The next number, which is also the new state.
std::uint64_t nextRandom();

// The next number as a fraction from 0 to 1, both included: of the highest numbers the nearest double is 2^64.
double nextRandomFraction();

// Back to the state of a fresh program.
void resetRandom();

} // namespace dunkman
