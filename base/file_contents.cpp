#include "base/file_contents.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>

#include "base/fatal.h"
#include "base/files.h"

namespace dunkman {

namespace {

constexpr std::size_t blockBytes = 65536;
constexpr std::uint64_t bytesPerMebibyte = 1024 * 1024;

// Decided before the file is opened: opening a pipe waits for whoever writes to it.
FileFault faultOfKind(FileKind kind) {
    switch (kind) {
    case FileKind::Ordinary:
        return FileFault::None;
    case FileKind::Other:
        return FileFault::NotOrdinary;
    default:
        return FileFault::Unreadable;
    }
}

} // namespace

FileContents readFile(const std::string& path, std::uint64_t mostBytes) {
    FileContents contents;
    const FileStatus status = statusOf(path);
    contents.fault = faultOfKind(status.kind);
    if (contents.fault != FileFault::None) {
        return contents;
    }
    const File file = File::toRead(path);
    if (!file.isOpen()) {
        contents.fault = FileFault::Unreadable;
        return contents;
    }
    if (status.size > mostBytes) {
        contents.fault = FileFault::TooLarge;
        return contents;
    }
    // One byte more than the file says, to meet its end at once; but it may also have said too little, or grow.
    std::size_t filled = 0;
    std::uint64_t room = status.size + 1;
    std::optional<std::size_t> count;
    do {
        if (filled == contents.bytes.size()) {
            contents.bytes.resize(static_cast<std::size_t>(room));
            room = std::min<std::uint64_t>(room + blockBytes, mostBytes + 1);
        }
        count = file.read(std::span(contents.bytes.data(), contents.bytes.size()).subspan(filled));
        filled += count.value_or(0);
    } while (count.value_or(0) > 0 && filled <= mostBytes);
    contents.bytes.resize(filled);
    if (filled > mostBytes) {
        contents = {Bytes(), FileFault::TooLarge};
    } else if (!count) {
        contents.fault = FileFault::Unreadable;
    }
    return contents;
}

FileContents readDataFile(const std::string& path, std::uint64_t mostBytes) {
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
