#include "workshop/art/texture/dxt1_picture.h"

#include "workshop/art/texture/dxt1_encoder.h"

#include <unordered_map>

namespace dunkman {

namespace {

int blocksFor(int texels) { return (texels + 3) / 4; }

struct BlockHash {
    std::size_t operator()(const BlockTexels& block) const {
        std::uint64_t hash = 14695981039346656037U;
        const auto add = [&hash](std::uint8_t byte) { hash = (hash ^ byte) * 1099511628211U; };
        for (const Rgba& texel : block.texels) {
            add(texel.red);
            add(texel.green);
            add(texel.blue);
            add(texel.alpha);
        }
        add(static_cast<std::uint8_t>(block.inside & 0xFF));
        add(static_cast<std::uint8_t>(block.inside >> 8));
        return static_cast<std::size_t>(hash);
    }
};

BlockTexels cutBlock(const Picture& picture, int left, int top) {
    BlockTexels block;
    block.inside = 0;
    for (int texel = 0; texel < 16; ++texel) {
        const int x = left + texel % 4;
        const int y = top + texel / 4;
        if (x >= picture.width || y >= picture.height) {
            continue;
        }
        block.inside = static_cast<std::uint16_t>(block.inside | (1 << texel));
        const Rgba& value = picture.at(x, y);
        if (value.alpha >= alphaCut) {
            block.texels[static_cast<std::size_t>(texel)] = {value.red, value.green, value.blue, 255};
        }
    }
    return block;
}

void appendBlock(std::vector<std::uint8_t>& bytes, const Dxt1Block& block) {
    const std::uint64_t word = static_cast<std::uint64_t>(block.firstColour) |
                               static_cast<std::uint64_t>(block.secondColour) << 16 |
                               static_cast<std::uint64_t>(block.indices) << 32;
    for (int byte = 0; byte < dxt1BlockBytes; ++byte) {
        bytes.push_back(static_cast<std::uint8_t>((word >> (8 * byte)) & 0xFF));
    }
}

Dxt1Block readBlock(std::span<const std::uint8_t> bytes) {
    std::uint64_t word = 0;
    for (std::size_t byte = 0; byte < dxt1BlockBytes; ++byte) {
        word |= static_cast<std::uint64_t>(bytes[byte]) << (8 * byte);
    }
    return {static_cast<std::uint16_t>(word & 0xFFFF), static_cast<std::uint16_t>((word >> 16) & 0xFFFF),
            static_cast<std::uint32_t>(word >> 32)};
}

} // namespace

std::size_t dxt1Bytes(int width, int height) {
    return static_cast<std::size_t>(blocksFor(width)) * static_cast<std::size_t>(blocksFor(height)) *
           dxt1BlockBytes;
}

std::vector<std::uint8_t> encodePicture(const Picture& picture) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(dxt1Bytes(picture.width, picture.height));
    // Flat drawings repeat the same few blocks over and over; each is worked out once.
    std::unordered_map<BlockTexels, Dxt1Block, BlockHash> known;
    for (int top = 0; top < picture.height; top += 4) {
        for (int left = 0; left < picture.width; left += 4) {
            const BlockTexels block = cutBlock(picture, left, top);
            const auto [entry, isNew] = known.try_emplace(block);
            if (isNew) {
                entry->second = encodeBlock(block);
            }
            appendBlock(bytes, entry->second);
        }
    }
    return bytes;
}

Picture decodePicture(int width, int height, std::span<const std::uint8_t> blocks) {
    Picture picture(width, height);
    std::size_t offset = 0;
    for (int top = 0; top < height; top += 4) {
        for (int left = 0; left < width; left += 4) {
            const std::array<Rgba, 16> texels =
                decodeBlock(readBlock(blocks.subspan(offset, dxt1BlockBytes)));
            offset += dxt1BlockBytes;
            for (int texel = 0; texel < 16; ++texel) {
                const int x = left + texel % 4;
                const int y = top + texel / 4;
                if (x < width && y < height) {
                    picture.at(x, y) = texels[static_cast<std::size_t>(texel)];
                }
            }
        }
    }
    return picture;
}

} // namespace dunkman
