#include "base/files.h"

#include <windows.h>

#include <algorithm>

#include "base/wide_text_win32.h"

namespace dunkman {

namespace {

std::error_code lastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

HANDLE systemHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

// One call takes no more than fits its 32 bits.
DWORD atMost(std::size_t bytes) {
    constexpr std::size_t mostInACall = std::size_t{1} << 30;
    return static_cast<DWORD>(std::min(bytes, mostInACall));
}

std::intptr_t openFile(const std::string& path, DWORD access, DWORD disposition) {
    // Others may go on reading, writing and renaming it, as with any file that the C library opens.
    const HANDLE handle =
        CreateFileW(wideText(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return reinterpret_cast<std::intptr_t>(handle); // INVALID_HANDLE_VALUE is -1
}

// A path that a function of the system writes into a buffer; it answers the length, or the room that it needs.
template <typename Write> std::string pathFrom(Write write) {
    const DWORD room = write(0, nullptr);
    std::wstring path(room, L'\0');
    const DWORD length = room == 0 ? 0 : write(room, path.data());
    if (length == 0 || length >= room) {
        return {};
    }
    path.resize(length);
    return utf8Text(path);
}

} // namespace

FileStatus statusOf(const std::string& path) {
    const HANDLE handle =
        CreateFileW(wideText(path).c_str(), FILE_READ_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS, nullptr); // without that flag a folder cannot be opened
    if (handle == INVALID_HANDLE_VALUE) {
        return {};
    }
    FileStatus status;
    BY_HANDLE_FILE_INFORMATION information = {};
    if (GetFileType(handle) != FILE_TYPE_DISK) {
        status.kind = FileKind::Other;
    } else if (GetFileInformationByHandle(handle, &information) == FALSE) {
        status.kind = FileKind::None;
    } else if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        status.kind = FileKind::Folder;
    } else {
        status.kind = FileKind::Ordinary;
        status.size = std::uint64_t{information.nFileSizeHigh} << 32 | information.nFileSizeLow;
    }
    CloseHandle(handle);
    return status;
}

File File::toRead(const std::string& path) { return File(openFile(path, GENERIC_READ, OPEN_EXISTING)); }

File File::toWrite(const std::string& path) { return File(openFile(path, GENERIC_WRITE, CREATE_ALWAYS)); }

std::optional<std::size_t> File::read(std::span<char> bytes) const {
    DWORD count = 0;
    if (ReadFile(systemHandle(handle), bytes.data(), atMost(bytes.size()), &count, nullptr) == FALSE) {
        return std::nullopt;
    }
    return count;
}

bool File::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        DWORD count = 0;
        if (WriteFile(systemHandle(handle), bytes.data(), atMost(bytes.size()), &count, nullptr) == FALSE ||
            count == 0) {
            return false;
        }
        bytes.remove_prefix(count);
    }
    return true;
}

bool File::close() {
    const std::intptr_t open = handle;
    handle = closed;
    return open == closed || CloseHandle(systemHandle(open)) != FALSE;
}

std::error_code renameFile(const std::string& from, const std::string& to) {
    const BOOL isRenamed =
        MoveFileExW(wideText(from).c_str(), wideText(to).c_str(), MOVEFILE_REPLACE_EXISTING);
    return isRenamed != FALSE ? std::error_code() : lastError();
}

void removeFile(const std::string& path) { DeleteFileW(wideText(path).c_str()); }

std::string workingFolder() {
    return pathFrom([](DWORD room, wchar_t* path) { return GetCurrentDirectoryW(room, path); });
}

std::error_code enterFolder(const std::string& path) {
    return SetCurrentDirectoryW(wideText(path).c_str()) != FALSE ? std::error_code() : lastError();
}

std::string temporaryFolder() {
    const std::string folder = pathFrom([](DWORD room, wchar_t* path) { return GetTempPathW(room, path); });
    return statusOf(folder).kind == FileKind::Folder ? folder : std::string();
}

std::string pathIn(const std::string& folder, std::string_view name) {
    std::string path = folder;
    if (!path.empty() && path.back() != '\\' && path.back() != '/') {
        path += '\\';
    }
    return path.append(name);
}

} // namespace dunkman
