#pragma once

#include <filesystem>
#include <string_view>

namespace dunkman {

// An empty folder that is the working directory for the life of this object; gone afterwards.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Writes a file under a relative path, folders included.
    void write(std::string_view path, std::string_view bytes) const;

private:
    std::filesystem::path before;
    std::filesystem::path folder;
};

} // namespace dunkman
