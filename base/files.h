#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

// What the game does with files, and no more: the standard library's streams and paths would make up a third of the
// program. Paths are UTF-8 on every platform; relative ones begin at the working directory.
namespace dunkman {

enum class FileKind {
    None, // nothing there, or nothing that may be looked at
    Ordinary,
    Folder,
    Other, // a pipe or a device
};

struct FileStatus {
    FileKind kind = FileKind::None;
    std::uint64_t size = 0; // bytes, of an ordinary file
};

// Of what a link leads to, not of the link.
FileStatus statusOf(const std::string& path);

// A file that is open until its life ends.
class File {
public:
    static File toRead(const std::string& path);
    static File toWrite(const std::string& path); // a new one, or an old one emptied
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { close(); }

    bool isOpen() const { return handle != closed; }

    // As many bytes as there are to be had at once, 0 only at the end; nothing when reading fails.
    std::optional<std::size_t> read(std::span<char> bytes) const;

    // Whether all of them were taken.
    bool write(std::string_view bytes) const;

    // Whether all that was written has been taken, and nothing is open any more.
    bool close();

private:
    static constexpr std::intptr_t closed = -1;

    explicit File(std::intptr_t itsHandle) : handle(itsHandle) {}

    std::intptr_t handle; // the system's
};

// A file of the new name is replaced.
std::error_code renameFile(const std::string& from, const std::string& to);

// Without a word when it is not there or stays.
void removeFile(const std::string& path);

std::string workingFolder(); // empty: it is gone
std::error_code enterFolder(const std::string& path);

// The user's folder for temporary files; empty: there is none.
std::string temporaryFolder();

// The path of something in a folder. An empty folder is the working directory.
std::string pathIn(const std::string& folder, std::string_view name);

} // namespace dunkman
