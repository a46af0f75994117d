#include "workshop/art/texture/dds_file.h"

#include "render/dds.h"
#include "workshop/art/texture/dxt1_picture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace dunkman {

namespace {

constexpr std::uint32_t dxt1 = 0x31545844; // "DXT1"
constexpr std::uint32_t pixelFormatSize = 32;
constexpr std::uint32_t pixelFormatIsFourCc = 0x4;

// Flags of the header: which fields are valid.
constexpr std::uint32_t hasCaps = 0x1;
constexpr std::uint32_t hasHeight = 0x2;
constexpr std::uint32_t hasWidth = 0x4;
constexpr std::uint32_t hasPixelFormat = 0x1000;
constexpr std::uint32_t hasMipMapCount = 0x20000;
constexpr std::uint32_t hasLinearSize = 0x80000;

// What the file holds.
constexpr std::uint32_t capsComplex = 0x8;
constexpr std::uint32_t capsTexture = 0x1000;
constexpr std::uint32_t capsMipMap = 0x400000;

using HeaderWords = std::array<std::uint32_t, sizeof(DdsHeader) / 4>;
constexpr std::size_t pixelsOffset = 4 + sizeof(DdsHeader);

void appendWord(std::vector<std::uint8_t>& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>((word >> shift) & 0xFF));
    }
}

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        word |= static_cast<std::uint32_t>(bytes[offset + byte]) << (8 * byte);
    }
    return word;
}

DdsHeader headerFor(const DdsTexture& texture) {
    DdsHeader header = {};
    header.size = sizeof(DdsHeader);
    header.flags = hasCaps | hasHeight | hasWidth | hasPixelFormat | hasMipMapCount | hasLinearSize;
    header.height = static_cast<std::uint32_t>(texture.height);
    header.width = static_cast<std::uint32_t>(texture.width);
    header.pitchOrLinearSize = static_cast<std::uint32_t>(dxt1Bytes(texture.width, texture.height));
    header.mipMapCount = static_cast<std::uint32_t>(texture.levels.size());
    header.pixelFormatSize = pixelFormatSize;
    header.pixelFormatFlags = pixelFormatIsFourCc;
    header.fourCc = dxt1;
    header.caps[0] = capsTexture | capsComplex | capsMipMap;
    return header;
}

DdsHeader parseHeader(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    if (bytes.size() < pixelsOffset || wordAt(bytes, 0) != ddsMagic) {
        throw std::runtime_error(name + ": not a DDS file");
    }
    HeaderWords words = {};
    for (std::size_t word = 0; word < words.size(); ++word) {
        words[word] = wordAt(bytes, 4 + 4 * word);
    }
    const auto header = std::bit_cast<DdsHeader>(words);
    if (header.size != sizeof(DdsHeader) || header.fourCc != dxt1) {
        throw std::runtime_error(name + ": not DXT1");
    }
    return header;
}

} // namespace

std::vector<std::uint8_t> ddsBytes(const DdsTexture& texture) {
    std::vector<std::uint8_t> bytes;
    appendWord(bytes, ddsMagic);
    for (const std::uint32_t word : std::bit_cast<HeaderWords>(headerFor(texture))) {
        appendWord(bytes, word);
    }
    for (const std::vector<std::uint8_t>& level : texture.levels) {
        bytes.insert(bytes.end(), level.begin(), level.end());
    }
    return bytes;
}

DdsTexture parseDdsTexture(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    const DdsHeader header = parseHeader(bytes, name);
    DdsTexture texture{static_cast<int>(header.width), static_cast<int>(header.height), {}};
    std::size_t offset = pixelsOffset;
    for (int level = 0; level < static_cast<int>(header.mipMapCount); ++level) {
        const std::size_t size =
            dxt1Bytes(std::max(1, texture.width >> level), std::max(1, texture.height >> level));
        if (bytes.size() - offset < size) {
            throw std::runtime_error(name + ": ends before its last level");
        }
        const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        texture.levels.emplace_back(start, start + static_cast<std::ptrdiff_t>(size));
        offset += size;
    }
    return texture;
}

void writeDdsTexture(const std::string& path, const DdsTexture& texture) {
    const std::vector<std::uint8_t> bytes = ddsBytes(texture);
    const std::string unfinished = path + ".new";
    std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
    std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(file));
    file.close();
    if (!file) {
        throw std::runtime_error(unfinished + ": cannot be written");
    }
    std::filesystem::rename(unfinished, path);
}

DdsTexture readDdsTexture(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(path + ": cannot be opened");
    }
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(file)),
                                          std::istreambuf_iterator<char>());
    return parseDdsTexture(bytes, path);
}

Picture decodeLevel(const DdsTexture& texture, int level) {
    return decodePicture(std::max(1, texture.width >> level), std::max(1, texture.height >> level),
                         texture.levels.at(static_cast<std::size_t>(level)));
}

} // namespace dunkman
