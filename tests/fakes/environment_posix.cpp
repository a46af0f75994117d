#include "tests/fakes/environment.h"

#include <cstdlib>

namespace dunkman {

void setTemporaryFolder(const std::string& folder) { setenv("TMPDIR", folder.c_str(), 1); }

} // namespace dunkman
