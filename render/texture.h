#pragma once

#include <cstdint>
#include <string>

#include "render/handle.h"

namespace dunkman {

// A DXT1 texture, or the description of one that somebody else owns: sprites hold copies.
class Texture2D final : public HandleBase {
public:
    std::uint32_t internalFormat = 0x8229; // GL_R8, the format of a texture that was never loaded
    std::uint32_t width = 0;               // texels
    std::uint32_t height = 0;              // texels
    std::uint8_t levels = 1;

    Texture2D() = default;

    // Loads a DDS file whose pixels are DXT1. Stops the game with a message that names the file when it is
    // missing, is no DDS file or ends too early.
    explicit Texture2D(const std::string& path);

    void release() override;

    // The same texture.
    friend bool operator==(const Texture2D& one, const Texture2D& other) { return one.name == other.name; }
};

// Width over height in texels, where an extent of 0 counts as 1.
double aspectOf(const Texture2D& texture);

} // namespace dunkman
