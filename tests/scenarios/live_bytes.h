#pragma once

#include <cstdint>

namespace dunkman {

// What the program holds of its heap at this moment, as the allocator counts it; 0 where that cannot be asked.
std::int64_t liveHeapBytes();

// What the system has given it of the machine's memory; 0 where that cannot be asked.
std::int64_t residentBytes();

} // namespace dunkman
