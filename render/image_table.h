#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "render/texture.h"

namespace dunkman {

inline constexpr std::size_t glyphCount = 26;

// The pictures and letters that drawing looks up by name.
struct Pictures {
    std::unordered_map<std::string, Texture2D> imageTable; // image key -> texture; order never matters
    std::array<Texture2D, glyphCount> glyphTable;          // A to Z
};

extern const Pictures& pictures;

// The texture of an image key. Stops the game with a message that names an unknown key.
const Texture2D& imageByKey(std::string_view key);

} // namespace dunkman
