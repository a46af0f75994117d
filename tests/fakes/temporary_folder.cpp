#include "tests/fakes/temporary_folder.h"

#include "tests/fakes/environment.h"

namespace dunkman {

TemporaryFolder::TemporaryFolder()
    : path(std::filesystem::absolute("temporary")), before(std::filesystem::temp_directory_path()) {
    std::filesystem::create_directory(path);
    setTemporaryFolder(path.string());
}

TemporaryFolder::~TemporaryFolder() { setTemporaryFolder(before.string()); }

} // namespace dunkman
