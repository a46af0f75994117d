#include "world/arena_script.h"

#include <array>

namespace dunkman {

namespace {

constexpr std::array<WaveStep, 5> ambush = {{{0, 1}, {0, 1}, {leftViewEdge, 1}, {rightViewEdge, 1}, {0, 0}}};

constexpr std::array<WaveScript, lastScriptVariant - firstScriptVariant + 1> scripts = {{{ambush}}};

} // namespace

const WaveScript* waveScriptFor(std::int32_t enemyVariant) {
    if (enemyVariant < firstScriptVariant) {
        return nullptr;
    }
    const auto number = static_cast<std::size_t>(enemyVariant - firstScriptVariant);
    return number < scripts.size() ? &scripts[number] : nullptr;
}

} // namespace dunkman
