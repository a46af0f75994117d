#include "audio/mirrored_memory.h"

#include <cassert>
#include <cerrno>

#include <sys/mman.h>
#include <unistd.h>

namespace dunkman {

namespace {

CallResult lastError(const char* call) { return {call, -errno}; }

} // namespace

CallResult MirroredMemory::allocate(std::uint32_t bytes) {
    assert(first == nullptr);
    const int section = memfd_create("ring", 0);
    if (section < 0) {
        return lastError("memfd_create");
    }
    CallResult result;
    void* reserved = MAP_FAILED;
    if (ftruncate(section, static_cast<off_t>(bytes)) != 0) {
        result = lastError("ftruncate");
    } else {
        reserved = mmap(nullptr, std::size_t{2} * bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (reserved == MAP_FAILED) {
            result = lastError("mmap");
        }
    }
    if (reserved != MAP_FAILED) {
        std::byte* const base = static_cast<std::byte*>(reserved);
        for (std::byte* const view : {base, base + bytes}) {
            if (mmap(view, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, section, 0) == MAP_FAILED) {
                result = lastError("mmap");
            }
        }
        if (result.failed()) {
            munmap(reserved, std::size_t{2} * bytes);
        } else {
            first = base;
            second = base + bytes;
            bytesOnce = bytes;
        }
    }
    close(section);
    return result;
}

void MirroredMemory::release() {
    if (first != nullptr) {
        munmap(first, std::size_t{2} * bytesOnce);
    }
    first = nullptr;
    second = nullptr;
    bytesOnce = 0;
}

} // namespace dunkman
