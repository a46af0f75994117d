#include "tests/fakes/scratch_folder.h"

#include <chrono>
#include <fstream>
#include <string>

namespace dunkman {

ScratchFolder::ScratchFolder() : before(std::filesystem::current_path()) {
    // The clock keeps test programs that run side by side apart.
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    folder = std::filesystem::temp_directory_path() / ("dunkman-assets-" + std::to_string(now));
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::current_path(before, ignored);
    std::filesystem::remove_all(folder, ignored);
}

void ScratchFolder::write(std::string_view path, std::string_view bytes) const {
    const std::filesystem::path target = folder / path;
    std::filesystem::create_directories(target.parent_path());
    std::ofstream(target, std::ios::binary) << bytes;
}

} // namespace dunkman
