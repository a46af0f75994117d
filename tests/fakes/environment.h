#pragma once

#include <string>

namespace dunkman {

// What the system takes for its folder for temporary files from now on.
void setTemporaryFolder(const std::string& folder);

} // namespace dunkman
