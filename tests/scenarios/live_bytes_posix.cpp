#include "tests/scenarios/live_bytes.h"

#include <malloc.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>

// The address sanitizer's own allocator, where the program has it.
// NOLINTNEXTLINE(readability-identifier-naming,bugprone-reserved-identifier): its name there
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace dunkman {

std::int64_t liveHeapBytes() {
    if (__sanitizer_get_current_allocated_bytes != nullptr) {
        return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
    }
    return static_cast<std::int64_t>(mallinfo2().uordblks);
}

std::int64_t residentBytes() {
    std::int64_t total = 0;
    std::int64_t resident = 0; // pages
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace dunkman
