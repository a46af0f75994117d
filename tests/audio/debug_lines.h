#pragma once

#include <string>
#include <vector>

namespace dunkman::testing {

// What went to the debugger output since the last call. Any thread may have written it.
std::vector<std::string> takeDebugLines();

} // namespace dunkman::testing
