#include "tools/art/dds_file.h"

#include "tools/art/dxt1_picture.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace dunkman {

namespace {

constexpr std::uint32_t magic = 0x20534444;         // "DDS "
constexpr std::uint32_t headerSize = 124;
constexpr std::uint32_t pixelFormatSize = 32;
constexpr std::uint32_t dxt1 = 0x31545844;          // "DXT1"
constexpr std::size_t fileHeaderSize = 4 + headerSize;

// Header flags: which fields are valid.
constexpr std::uint32_t hasCaps = 0x1;
constexpr std::uint32_t hasHeight = 0x2;
constexpr std::uint32_t hasWidth = 0x4;
constexpr std::uint32_t hasPixelFormat = 0x1000;
constexpr std::uint32_t hasMipMapCount = 0x20000;
constexpr std::uint32_t hasLinearSize = 0x80000;
constexpr std::uint32_t pixelFormatIsFourCc = 0x4;
constexpr std::uint32_t capsComplex = 0x8;
constexpr std::uint32_t capsTexture = 0x1000;
constexpr std::uint32_t capsMipMap = 0x400000;

// Places of the 32-bit words that are read back, counted from the start of the file.
constexpr std::size_t heightWord = 3;
constexpr std::size_t widthWord = 4;
constexpr std::size_t mipMapCountWord = 7;
constexpr std::size_t fourCcWord = 21;

void appendWord(std::vector<std::uint8_t>& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>((word >> shift) & 0xFF));
    }
}

void appendWords(std::vector<std::uint8_t>& bytes, std::initializer_list<std::uint32_t> words) {
    for (const std::uint32_t word : words) {
        appendWord(bytes, word);
    }
}

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t word) {
    std::uint32_t value = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        value |= static_cast<std::uint32_t>(bytes[word * 4 + byte]) << (8 * byte);
    }
    return value;
}

} // namespace

std::vector<std::uint8_t> ddsBytes(const DdsTexture& texture) {
    std::vector<std::uint8_t> bytes;
    const std::uint32_t flags =
        hasCaps | hasHeight | hasWidth | hasPixelFormat | hasMipMapCount | hasLinearSize;
    const auto height = static_cast<std::uint32_t>(texture.height);
    const auto width = static_cast<std::uint32_t>(texture.width);
    const auto linearSize = static_cast<std::uint32_t>(dxt1Bytes(texture.width, texture.height));
    const auto levelCount = static_cast<std::uint32_t>(texture.levels.size());
    const std::uint32_t depth = 0;
    appendWords(bytes, {magic, headerSize, flags, height, width, linearSize, depth, levelCount});
    for (int reserved = 0; reserved < 11; ++reserved) {
        appendWord(bytes, 0);
    }
    // Pixel format: size, flags, FourCC, bit count and four masks; then four words of caps and one reserved.
    appendWords(bytes, {pixelFormatSize, pixelFormatIsFourCc, dxt1, 0, 0, 0, 0, 0});
    appendWords(bytes, {capsTexture | capsComplex | capsMipMap, 0, 0, 0, 0});
    for (const std::vector<std::uint8_t>& level : texture.levels) {
        bytes.insert(bytes.end(), level.begin(), level.end());
    }
    return bytes;
}

DdsTexture parseDds(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    if (bytes.size() < fileHeaderSize || wordAt(bytes, 0) != magic || wordAt(bytes, 1) != headerSize) {
        throw std::runtime_error(name + ": not a DDS file");
    }
    if (wordAt(bytes, fourCcWord) != dxt1) {
        throw std::runtime_error(name + ": not DXT1");
    }
    DdsTexture texture;
    texture.width = static_cast<int>(wordAt(bytes, widthWord));
    texture.height = static_cast<int>(wordAt(bytes, heightWord));
    const auto levelCount = static_cast<int>(wordAt(bytes, mipMapCountWord));
    std::size_t offset = fileHeaderSize;
    for (int level = 0; level < levelCount; ++level) {
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

void writeDds(const std::string& path, const DdsTexture& texture) {
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

DdsTexture readDds(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(path + ": cannot be opened");
    }
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(file)),
                                          std::istreambuf_iterator<char>());
    return parseDds(bytes, path);
}

Picture decodeLevel(const DdsTexture& texture, int level) {
    return decodePicture(std::max(1, texture.width >> level), std::max(1, texture.height >> level),
                         texture.levels.at(static_cast<std::size_t>(level)));
}

} // namespace dunkman
