#include "tests/workshop/art/range_fit.h"

#include <algorithm>
#include <utility>

namespace dunkman {

namespace {

int lightness(const Rgba& texel) { return texel.red + texel.green + texel.blue; }

std::uint16_t nearestPacked(const Rgba& texel) {
    return packColour(
        {(texel.red * 31 + 127) / 255, (texel.green * 63 + 127) / 255, (texel.blue * 31 + 127) / 255});
}

int squaredDistance(const Rgba& one, const Rgba& other) {
    const int red = one.red - other.red;
    const int green = one.green - other.green;
    const int blue = one.blue - other.blue;
    return red * red + green * green + blue * blue;
}

std::uint32_t nearestIndex(const std::array<Rgba, 4>& palette, const Rgba& texel) {
    std::uint32_t nearest = 0;
    for (std::uint32_t index = 1; index < 4; ++index) {
        if (palette[index].alpha != 0 &&
            squaredDistance(palette[index], texel) < squaredDistance(palette[nearest], texel)) {
            nearest = index;
        }
    }
    return nearest;
}

} // namespace

Dxt1Block encodeByRange(const BlockTexels& block) {
    const Rgba* darkest = nullptr;
    const Rgba* lightest = nullptr;
    bool hasHole = false;
    for (const Rgba& texel : block.texels) {
        if (texel.alpha < alphaCut) {
            hasHole = true;
            continue;
        }
        darkest = darkest == nullptr || lightness(texel) < lightness(*darkest) ? &texel : darkest;
        lightest = lightest == nullptr || lightness(texel) > lightness(*lightest) ? &texel : lightest;
    }
    if (darkest == nullptr) {
        return {0, 0, 0xFFFFFFFF};
    }
    Dxt1Block result{nearestPacked(*lightest), nearestPacked(*darkest), 0};
    if ((result.firstColour > result.secondColour) == hasHole) {
        std::swap(result.firstColour, result.secondColour);
    }
    const std::array<Rgba, 4> palette = blockPalette(result);
    for (std::size_t texel = 0; texel < 16; ++texel) {
        const bool hole = block.texels[texel].alpha < alphaCut;
        const std::uint32_t index = hole ? 3 : nearestIndex(palette, block.texels[texel]);
        result.indices |= index << (2 * texel);
    }
    return result;
}

Picture throughRangeFit(const Picture& picture) {
    Picture result(picture.width, picture.height);
    for (int top = 0; top < picture.height; top += 4) {
        for (int left = 0; left < picture.width; left += 4) {
            BlockTexels block;
            for (int texel = 0; texel < 16; ++texel) {
                block.texels[static_cast<std::size_t>(texel)] = picture.at(left + texel % 4, top + texel / 4);
            }
            const std::array<Rgba, 16> decoded = decodeBlock(encodeByRange(block));
            for (int texel = 0; texel < 16; ++texel) {
                result.at(left + texel % 4, top + texel / 4) = decoded[static_cast<std::size_t>(texel)];
            }
        }
    }
    return result;
}

} // namespace dunkman
