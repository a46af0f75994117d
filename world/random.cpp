#include "world/random.h"

namespace dunkman {

std::uint64_t randomState = 0;

std::uint64_t nextRandom() {
    const std::uint64_t scrambled = randomState * 0xb5297a4db5297a4du;
    const std::uint64_t shifted = ((scrambled >> 8) ^ scrambled) + 0x68e31da468e31da4u;
    const std::uint64_t mixed = ((shifted << 8) ^ shifted) * 0x1b56c4e91b56c4e9u;
    randomState = (mixed >> 8) ^ mixed;
    return randomState;
}

double nextRandomFraction() {
    // 2^-64: a power of two, so that the product is exact and only the conversion rounds.
    constexpr double toFraction = 5.421010862427522e-20;
    return static_cast<double>(nextRandom()) * toFraction;
}

void resetRandom() { randomState = 0; }

} // namespace dunkman
