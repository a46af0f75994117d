#include "tests/workshop/art/cartoon.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace dunkman {

namespace {

struct Disc {
    double x;
    double y;
    double radius;
    Rgba colour;
};

constexpr Rgba ink = {43, 27, 61, 255};

/// From the lowest to the topmost; places and radii as fractions of the picture's smaller side.
constexpr std::array<Disc, 9> discs = {{
    {0.50, 0.60, 0.36, ink},
    {0.50, 0.60, 0.31, {224, 57, 62, 255}},
    {0.42, 0.68, 0.20, {176, 35, 64, 255}},
    {0.50, 0.28, 0.24, ink},
    {0.50, 0.28, 0.20, {233, 160, 107, 255}},
    {0.45, 0.33, 0.11, {201, 120, 80, 255}},
    {0.58, 0.24, 0.06, ink},
    {0.58, 0.24, 0.035, {255, 247, 234, 255}},
    {0.66, 0.70, 0.05, {255, 210, 63, 255}},
}};

std::uint8_t mix(std::uint8_t under, std::uint8_t over, double share) {
    return static_cast<std::uint8_t>(std::floor(under + (over - under) * share + 0.5));
}

/// Lays a colour over a texel; a transparent texel takes the colour as it is and only the share as its alpha.
void lay(Rgba& texel, const Rgba& colour, double share) {
    if (share <= 0.0) {
        return;
    }
    if (texel.alpha == 0) {
        texel = colour;
        texel.alpha = static_cast<std::uint8_t>(std::floor(share * 255.0 + 0.5));
        return;
    }
    texel.red = mix(texel.red, colour.red, share);
    texel.green = mix(texel.green, colour.green, share);
    texel.blue = mix(texel.blue, colour.blue, share);
    texel.alpha = std::max(texel.alpha, static_cast<std::uint8_t>(std::floor(share * 255.0 + 0.5)));
}

} // namespace

Picture makeCartoon(int width, int height) {
    Picture picture(width, height);
    const double side = std::min(width, height);
    for (const Disc& disc : discs) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const double across = x + 0.5 - disc.x * width;
                const double down = y + 0.5 - disc.y * height;
                const double inside = disc.radius * side - std::sqrt(across * across + down * down);
                lay(picture.at(x, y), disc.colour, std::clamp(inside + 0.5, 0.0, 1.0));
            }
        }
    }
    return picture;
}

Picture makeSky(int width, int height) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double down = (y + 0.5) / height;
            const double across = (x + 0.5) / width;
            const double sun =
                std::clamp(1.0 - 3.0 * std::fabs(across - 0.6) - std::fabs(down - 0.5), 0.0, 1.0);
            Rgba& texel = picture.at(x, y);
            texel = {mix(61, 255, down), mix(42, 178, down), mix(107, 122, down), 255};
            lay(texel, {255, 241, 176, 255}, sun);
        }
    }
    return picture;
}

Picture makeFlat(int width, int height, Rgba colour) {
    Picture picture(width, height);
    std::fill(picture.texels.begin(), picture.texels.end(), colour);
    return picture;
}

} // namespace dunkman
