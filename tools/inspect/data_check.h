#pragma once

#include <string>
#include <vector>

namespace dunkman::inspect {

// Every fault of the current data directory: "FILE:LINE:COLUMN: message" where a place is known, "FILE: message"
// otherwise. Lines and columns count from 1. What the game passes over in silence is told here.
std::vector<std::string> checkData();

} // namespace dunkman::inspect
