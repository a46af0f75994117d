#include "base/file_contents.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <system_error>

#include "base/fatal.h"

namespace dunkman {

namespace {

constexpr std::size_t blockBytes = 65536;
constexpr std::uintmax_t bytesPerMebibyte = 1024 * 1024;

// Decided before the file is opened: opening a pipe waits for whoever writes to it.
FileFault faultOfKind(std::filesystem::file_type type) {
    switch (type) {
    case std::filesystem::file_type::regular:
        return FileFault::None;
    case std::filesystem::file_type::none:
    case std::filesystem::file_type::not_found:
    case std::filesystem::file_type::unknown:
    case std::filesystem::file_type::directory:
        return FileFault::Unreadable;
    default:
        return FileFault::NotOrdinary;
    }
}

} // namespace

FileContents readFile(const std::filesystem::path& path, std::uintmax_t mostBytes) {
    FileContents contents;
    std::error_code error;
    contents.fault = faultOfKind(std::filesystem::status(path, error).type());
    if (contents.fault != FileFault::None) {
        return contents;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    if (error || !file) {
        contents.fault = FileFault::Unreadable;
        return contents;
    }
    if (size > mostBytes) {
        contents.fault = FileFault::TooLarge;
        return contents;
    }
    // One byte more than the file says, to meet its end at once; but it may also have said too little, or grow.
    std::size_t filled = 0;
    std::uintmax_t room = size + 1;
    while (file && filled <= mostBytes) {
        contents.bytes.resize(static_cast<std::size_t>(room));
        file.read(contents.bytes.data() + filled,
                  static_cast<std::streamsize>(contents.bytes.size() - filled));
        filled += static_cast<std::size_t>(file.gcount());
        room = std::min<std::uintmax_t>(filled + blockBytes, mostBytes + 1);
    }
    contents.bytes.resize(filled);
    if (filled > mostBytes) {
        contents = {{}, FileFault::TooLarge};
    } else if (!file.eof()) {
        contents.fault = FileFault::Unreadable;
    }
    return contents;
}

FileContents readDataFile(const std::string& path, std::uintmax_t mostBytes) {
    return namingFile(path, [&path, mostBytes] {
        FileContents contents = readFile(path, mostBytes);
        if (contents.fault == FileFault::NotOrdinary) {
            fatal("\"" + path +
                  "\" is a pipe or a device, but the game needs an ordinary file there. Put the game's " +
                  "own file back in its place.");
        }
        if (contents.fault == FileFault::TooLarge) {
            fatal("The file \"" + path + "\" is larger than " + std::to_string(mostBytes / bytesPerMebibyte) +
                  " MiB, the most that such a file may have. Put the game's own file back in its place.");
        }
        return contents;
    });
}

} // namespace dunkman
