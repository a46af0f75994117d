#include "json5/big_natural.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace dunkman {

void BigNatural::multiplyAdd(std::uint32_t factor, std::uint32_t summand) {
    std::uint64_t carry = summand;
    for (std::uint32_t& word : words) {
        carry += std::uint64_t{word} * factor;
        word = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    if (carry != 0) {
        words.push_back(static_cast<std::uint32_t>(carry));
    }
}

void BigNatural::shiftLeft(int bits) {
    const int inner = bits % 32;
    if (inner != 0) {
        multiplyAdd(std::uint32_t{1} << inner, 0);
    }
    if (!words.empty()) {
        words.insert(words.begin(), static_cast<std::size_t>(bits / 32), 0);
    }
}

void BigNatural::subtract(const BigNatural& other) {
    std::uint64_t borrow = 0;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::uint64_t taken = borrow + (index < other.words.size() ? other.words[index] : 0);
        borrow = words[index] < taken ? 1 : 0;
        words[index] = static_cast<std::uint32_t>(words[index] - taken);
    }
    while (!words.empty() && words.back() == 0) {
        words.pop_back();
    }
}

bool BigNatural::operator<(const BigNatural& other) const {
    if (words.size() != other.words.size()) {
        return words.size() < other.words.size();
    }
    return std::lexicographical_compare(words.rbegin(), words.rend(), other.words.rbegin(),
                                        other.words.rend());
}

int BigNatural::bitCount() const {
    return words.empty() ? 0 : static_cast<int>(32 * words.size()) - std::countl_zero(words.back());
}

} // namespace dunkman
