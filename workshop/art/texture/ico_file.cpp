#include "workshop/art/texture/ico_file.h"

#include "workshop/art/texture/png_file.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace dunkman {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int largestSide = 256;
constexpr std::size_t headerSize = 6;
constexpr std::size_t entrySize = 16;
constexpr std::uint32_t bitmapHeaderSize = 40;

void append16(Bytes& bytes, std::uint32_t value) {
    bytes.push_back(static_cast<std::uint8_t>(value & 0xFFU));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 0xFFU));
}

void append32(Bytes& bytes, std::uint32_t value) {
    append16(bytes, value & 0xFFFFU);
    append16(bytes, value >> 16);
}

// A row of the mask: a bit for each texel, set where nothing is drawn, in whole words of 32 bits.
void appendMaskRow(Bytes& bytes, const Picture& picture, int y) {
    for (int left = 0; left < picture.width; left += 32) {
        for (int byte = left; byte < left + 32; byte += 8) {
            unsigned bits = 0;
            for (int x = byte; x < byte + 8; ++x) {
                bits = bits << 1 | (x < picture.width && picture.at(x, y).alpha == 0 ? 1U : 0U);
            }
            bytes.push_back(static_cast<std::uint8_t>(bits));
        }
    }
}

// Rows run from the bottom up; the height counts picture and mask.
Bytes bitmapOf(const Picture& picture) {
    Bytes bytes;
    append32(bytes, bitmapHeaderSize);
    append32(bytes, static_cast<std::uint32_t>(picture.width));
    append32(bytes, static_cast<std::uint32_t>(2 * picture.height));
    append16(bytes, 1);  // planes
    append16(bytes, 32); // bits of a texel
    for (int unused = 0; unused < 6; ++unused) {
        append32(bytes, 0); // not packed; size, resolution and palette follow from the rest
    }
    for (int y = picture.height - 1; y >= 0; --y) {
        for (int x = 0; x < picture.width; ++x) {
            const Rgba& texel = picture.at(x, y);
            bytes.insert(bytes.end(), {texel.blue, texel.green, texel.red, texel.alpha});
        }
    }
    for (int y = picture.height - 1; y >= 0; --y) {
        appendMaskRow(bytes, picture, y);
    }
    return bytes;
}

Bytes readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

std::vector<std::uint8_t> icoBytes(const std::vector<IconPicture>& pictures) {
    Bytes bytes;
    append16(bytes, 0);
    append16(bytes, 1); // an icon, no cursor
    append16(bytes, static_cast<std::uint32_t>(pictures.size()));
    Bytes images;
    for (const IconPicture& icon : pictures) {
        const Bytes image = icon.picture.width < largestSide ? bitmapOf(icon.picture) : icon.png;
        const auto side = static_cast<std::uint8_t>(icon.picture.width % largestSide); // 0 says 256
        bytes.insert(bytes.end(), {side, side, 0, 0});
        append16(bytes, 1);
        append16(bytes, 32);
        append32(bytes, static_cast<std::uint32_t>(image.size()));
        append32(bytes, static_cast<std::uint32_t>(headerSize + entrySize * pictures.size() + images.size()));
        images.insert(images.end(), image.begin(), image.end());
    }
    bytes.insert(bytes.end(), images.begin(), images.end());
    return bytes;
}

void writeIcon(const std::string& path, const std::vector<std::string>& pngPaths) {
    std::vector<IconPicture> pictures;
    for (const std::string& pngPath : pngPaths) {
        pictures.push_back({readPng(pngPath), readBytes(pngPath)});
        const Picture& picture = pictures.back().picture;
        if (picture.width != picture.height || picture.width > largestSide) {
            throw std::runtime_error(pngPath +
                                     ": a picture of an icon is square and at most 256 texels wide");
        }
    }
    const Bytes bytes = icoBytes(pictures);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(file));
    file.close();
    if (!file) {
        throw std::runtime_error(path + ": cannot be written");
    }
}

} // namespace dunkman
