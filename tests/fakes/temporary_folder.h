#pragma once

#include <filesystem>

namespace dunkman {

// A folder of its own below the working directory, which the system takes for its folder for temporary files while
// this lives. Whoever made the working directory removes it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path path;

private:
    const std::filesystem::path before;
};

} // namespace dunkman
