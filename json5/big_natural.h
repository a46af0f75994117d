#pragma once

#include <cstdint>
#include <vector>

namespace dunkman {

// A natural number of any size: just what the exact conversion of long decimal literals needs.
class BigNatural {
public:
    void multiplyAdd(std::uint32_t factor, std::uint32_t summand);
    void shiftLeft(int bits);
    void subtract(const BigNatural& other); // other must not be larger
    bool operator<(const BigNatural& other) const;
    int bitCount() const; // 0 for zero

private:
    std::vector<std::uint32_t> words; // least significant first, no zero at the end
};

} // namespace dunkman
