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

void resetRandom() { randomState = 0; }

} // namespace dunkman
