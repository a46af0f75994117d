#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "render/texture.h"

// The pictures and letters that drawing looks up by name. The asset catalogue fills both tables at start-up and
// releases them at the end.
namespace dunkman {

inline constexpr std::size_t glyphCount = 26;

extern std::unordered_map<std::string, Texture2D> imageTable; // image key -> texture; order never matters
extern std::array<Texture2D, glyphCount> glyphTable;          // A to Z

// The texture of an image key. Stops the game with a message that names an unknown key.
const Texture2D& imageByKey(std::string_view key);

// Forgets both tables without touching OpenGL.
void resetImageTable();

} // namespace dunkman
