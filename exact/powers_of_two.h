#pragma once

#include <bit>
#include <cstdint>

namespace dunkman {

// 2^exponent for exponents of normal doubles, -1022 to 1023.
inline double powerOf2(int exponent) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

} // namespace dunkman
