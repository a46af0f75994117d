#include "tests/fakes/environment.h"

#include <windows.h>

namespace dunkman {

void setTemporaryFolder(const std::string& folder) { SetEnvironmentVariableA("TMP", folder.c_str()); }

} // namespace dunkman
