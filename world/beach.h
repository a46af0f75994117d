#pragma once

namespace dunkman {

// Where the hero can walk and zombies come from, in world units. The beach has no end to the right.
inline constexpr double beachHalfDepth = 1.5; // from the middle line, y = 0, up and down
inline constexpr double beachDepth = 3.0;
inline constexpr double beachStart = -11.0; // x

} // namespace dunkman
