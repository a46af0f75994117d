#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dunkman {

/// One texel: colour not multiplied by alpha, all four channels 0 to 255.
struct Rgba {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    bool operator==(const Rgba&) const = default;
};

/// A picture in texels, rows from top to bottom.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Rgba> texels;

    Picture() = default;
    Picture(int pictureWidth, int pictureHeight)
        : width(pictureWidth), height(pictureHeight),
          texels(static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight)) {}

    Rgba& at(int x, int y) { return texels[index(x, y)]; }
    const Rgba& at(int x, int y) const { return texels[index(x, y)]; }

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
};

/// A texel with at least this alpha is kept; anything below is cut away.
inline constexpr int alphaCut = 128;

} // namespace dunkman
