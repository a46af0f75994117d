#pragma once

#include <exception>

namespace dunkman::console {

// Prints on standard error what ended a developer program: the fault's own text, and of a lack of memory, which has none,
// what the game says of it. Returns 1, the exit status for it.
int endWithFault(const std::exception& fault);

} // namespace dunkman::console
