#pragma once

#include <cstddef>
#include <span>

namespace dunkman {

enum class Mp3Fault {
    None,
    Empty,
    NotMp3, // no run of MPEG layer III frames in it
    CutOff, // ends inside a frame, or holds fewer frames in one run than its own header says
};

// Looks through the bytes of a whole file without decoding it. Decoders play what they can of a damaged file,
// each a different stretch; this says the same everywhere. Tags in front and behind are passed over.
Mp3Fault examineMp3(std::span<const std::byte> file);

// For the debugger output; empty for None.
const char* describe(Mp3Fault fault);

} // namespace dunkman
