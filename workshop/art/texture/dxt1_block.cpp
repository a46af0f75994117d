#include "workshop/art/texture/dxt1_block.h"

namespace dunkman {

int expandChannel(int channel, int steps) {
    return channel == 1 ? (steps << 2) | (steps >> 4) : (steps << 3) | (steps >> 2);
}

std::uint16_t packColour(const ColourSteps& steps) {
    return static_cast<std::uint16_t>((steps[0] << 11) | (steps[1] << 5) | steps[2]);
}

ColourSteps unpackColour(std::uint16_t packed) {
    return {(packed >> 11) & 31, (packed >> 5) & 63, packed & 31};
}

std::array<Rgba, 4> blockPalette(const Dxt1Block& block) {
    const ColourSteps first = unpackColour(block.firstColour);
    const ColourSteps second = unpackColour(block.secondColour);
    const auto blend = [&](int part, int parts) {
        std::array<std::uint8_t, 3> value = {};
        for (int channel = 0; channel < 3; ++channel) {
            const auto at = static_cast<std::size_t>(channel);
            value[at] = static_cast<std::uint8_t>(blendChannel(
                expandChannel(channel, first[at]), expandChannel(channel, second[at]), part, parts));
        }
        return Rgba{value[0], value[1], value[2], 255};
    };
    if (block.firstColour > block.secondColour) {
        return {blend(0, 3), blend(3, 3), blend(1, 3), blend(2, 3)};
    }
    return {blend(0, 2), blend(2, 2), blend(1, 2), Rgba{0, 0, 0, 0}};
}

std::array<Rgba, 16> decodeBlock(const Dxt1Block& block) {
    const std::array<Rgba, 4> palette = blockPalette(block);
    std::array<Rgba, 16> texels = {};
    for (std::size_t texel = 0; texel < 16; ++texel) {
        texels[texel] = palette[(block.indices >> (2 * texel)) & 3];
    }
    return texels;
}

} // namespace dunkman
