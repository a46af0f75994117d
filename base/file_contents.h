#pragma once

#include <cstdint>
#include <string>

#include "base/bytes.h"

namespace dunkman {

enum class FileFault {
    None,
    Unreadable,  // missing, a folder, not ours to read, or broken; what came before the fault is in the bytes
    NotOrdinary, // a pipe or a device: reading it may never end, so it is not even opened
    TooLarge,    // beyond the bound that the caller gave; the bytes are empty
};

struct FileContents {
    Bytes bytes;
    FileFault fault = FileFault::None;
};

// A whole file, byte for byte, up to `mostBytes`.
FileContents readFile(const std::string& path, std::uint64_t mostBytes);

// The same for a file that the game cannot do without in the form it is meant to have: stops the game, with a message
// that names it, when it is no ordinary file, too large, or larger than there is memory for. An unreadable one is left
// to the caller.
FileContents readDataFile(const std::string& path, std::uint64_t mostBytes);

} // namespace dunkman
