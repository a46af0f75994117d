#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman::inspect {

// The name that somebody who wrote `name` probably meant: the one that takes the fewest letters added, left out,
// changed or swapped with their neighbour, when a third of the letters is enough, whether small or capital. Empty when none
// is near. Of several the first.
std::string_view nearestName(std::string_view name, std::span<const std::string_view> known);

// " Is "hero" meant?", or nothing.
std::string suggestion(std::string_view name, std::span<const std::string_view> known);

} // namespace dunkman::inspect
