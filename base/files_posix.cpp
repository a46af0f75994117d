#include "base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

namespace dunkman {

namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

} // namespace

FileStatus statusOf(const std::string& path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return {};
    }
    if (S_ISDIR(status.st_mode)) {
        return {FileKind::Folder};
    }
    if (!S_ISREG(status.st_mode)) {
        return {FileKind::Other};
    }
    return {FileKind::Ordinary, static_cast<std::uint64_t>(status.st_size)};
}

File File::toRead(const std::string& path) { return File(open(path.c_str(), O_RDONLY | O_CLOEXEC)); }

File File::toWrite(const std::string& path) {
    constexpr mode_t forEveryone = 0666; // less what the user's mask takes away
    return File(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, forEveryone));
}

std::optional<std::size_t> File::read(std::span<char> bytes) const {
    const ssize_t count = ::read(descriptor(handle), bytes.data(), bytes.size());
    if (count < 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(count);
}

bool File::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor(handle), bytes.data(), bytes.size());
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool File::close() {
    const std::intptr_t open = handle;
    handle = closed;
    return open == closed || ::close(descriptor(open)) == 0;
}

std::error_code renameFile(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? std::error_code() : lastError();
}

void removeFile(const std::string& path) { unlink(path.c_str()); }

std::string workingFolder() {
    std::array<char, PATH_MAX> path{};
    return getcwd(path.data(), path.size()) == nullptr ? std::string() : std::string(path.data());
}

std::error_code enterFolder(const std::string& path) {
    return chdir(path.c_str()) == 0 ? std::error_code() : lastError();
}

std::string temporaryFolder() {
    std::string folder = "/tmp";
    for (const char* const variable : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
        if (const char* const wanted = std::getenv(variable)) {
            folder = wanted;
            break;
        }
    }
    return statusOf(folder).kind == FileKind::Folder ? folder : std::string();
}

std::string pathIn(const std::string& folder, std::string_view name) {
    std::string path = folder;
    if (!path.empty() && path.back() != '/') {
        path += '/';
    }
    return path.append(name);
}

} // namespace dunkman
