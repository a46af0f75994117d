#pragma once

#include <cstddef>

namespace dunkman {

// Beyond any sense for a level, and yet at once loaded or refused. The check of data files knows them too.
inline constexpr std::size_t maxPrefabDepth = 64; // prefabs within prefabs; a prefab in the scene is 1 deep
inline constexpr std::size_t maxSceneEntries =
    100'000; // of a scene, those of each placed prefab counted every time

} // namespace dunkman
