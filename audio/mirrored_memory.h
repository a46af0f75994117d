#pragma once

#include <cstddef>
#include <cstdint>

#include "audio/call_result.h"

namespace dunkman {

// One stretch of memory that can be seen twice, back to back: what is written at data()[i] reads at
// data()[i + size()], so that a ring can be read and written across its end in one straight copy.
class MirroredMemory {
public:
    MirroredMemory() = default;
    ~MirroredMemory() { release(); }
    MirroredMemory(const MirroredMemory&) = delete;
    MirroredMemory& operator=(const MirroredMemory&) = delete;

    // Takes `bytes` of zeroed memory: a power of two, at least 65,536. On failure nothing is held, and the
    // result names the last call that failed. Only on an object that holds nothing.
    CallResult allocate(std::uint32_t bytes);
    void release();

    std::byte* data() const { return first; } // null when nothing is held
    std::byte* mirror() const { return second; }
    std::uint32_t size() const { return bytesOnce; }

private:
    std::byte* first = nullptr;
    std::byte* second = nullptr;
    std::uint32_t bytesOnce = 0;
};

} // namespace dunkman
