#include "tests/fakes/temporary_folder.h"

#include <cstdlib>
#include <string>

namespace dunkman {

namespace {

// The environment keeps pointers to these.
std::string posixVariable;
std::string windowsVariable;

void setTemporaryFolder(const std::string& folder) {
    posixVariable = "TMPDIR=" + folder;
    windowsVariable = "TMP=" + folder;
    putenv(posixVariable.data());
    putenv(windowsVariable.data());
}

} // namespace

TemporaryFolder::TemporaryFolder()
    : path(std::filesystem::absolute("temporary")), before(std::filesystem::temp_directory_path()) {
    std::filesystem::create_directory(path);
    setTemporaryFolder(path.string());
}

TemporaryFolder::~TemporaryFolder() { setTemporaryFolder(before.string()); }

} // namespace dunkman
