#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace dunkman {

// Places of a wave step that are no spawn point.
inline constexpr std::int32_t leftViewEdge = -2;
inline constexpr std::int32_t rightViewEdge = -1;

struct WaveStep {
    std::int32_t place;   // a view edge, or the number of a gathered spawn point
    std::int32_t variant; // kind of zombie, as an arena's enemyVariant
};

// A fixed order of spawning.
struct WaveScript {
    std::span<const WaveStep> steps;
};

// The enemyVariants that select a script; the lowest selects the first one.
inline constexpr std::int32_t firstScriptVariant = 4;
inline constexpr std::int32_t lastScriptVariant = 4;

// The script that an enemyVariant selects; null when there is none.
const WaveScript* waveScriptFor(std::int32_t enemyVariant);

} // namespace dunkman
