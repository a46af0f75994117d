#include "platform/unpacked_textures.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/software_gl.h"
#include "render/gl.h"

namespace dunkman::platform {

namespace {

// Values of the OpenGL registry that nothing else in the game uses.
constexpr GLenum texelOrder = 0x1908;     // GL_RGBA
constexpr GLenum texelType = 0x8367;      // GL_UNSIGNED_INT_8_8_8_8_REV
constexpr GLenum unpackedFormat = 0x8058; // GL_RGBA8

struct Driver {
    void (*textureStorage2D)(GLuint texture, GLsizei levels, GLenum format, GLsizei width,
                             GLsizei height) = nullptr;
    void (*compressedTextureSubImage2D)(GLuint texture, GLint level, GLint x, GLint y, GLsizei width,
                                        GLsizei height, GLenum format, GLsizei bytes,
                                        const void* blocks) = nullptr;
    void (*textureSubImage2D)(GLuint texture, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                              GLenum format, GLenum type, const void* texels) = nullptr;
};

Driver driver;

constexpr std::size_t blockTexels = 4; // a block is 4 by 4 texels
constexpr std::size_t blockBytes = 8;
constexpr std::size_t texelsAtATime = 16384;

// 8 bits each of alpha, blue, green and red, from the top, as texelType says.
using Texel = std::uint32_t;

struct Colour {
    int red = 0; // to 255
    int green = 0;
    int blue = 0;
};

// 5, 6 and 5 bits, spread over 8.
Colour colourOf(int packed) {
    const int red = packed >> 11;
    const int green = packed >> 5 & 0x3F;
    const int blue = packed & 0x1F;
    return {red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2};
}

Texel opaque(const Colour& colour) {
    return 0xFF000000u | static_cast<Texel>(colour.blue) << 16 | static_cast<Texel>(colour.green) << 8 |
           static_cast<Texel>(colour.red);
}

// A third of the way from the one to the other, or two; thirds in 256ths, as Mesa has them.
Colour third(const Colour& one, const Colour& other, int thirds) {
    const auto between = [thirds](int from, int to) { return from + ((to - from) * 85 * thirds >> 8); };
    return {between(one.red, other.red), between(one.green, other.green), between(one.blue, other.blue)};
}

Colour half(const Colour& one, const Colour& other) {
    const auto between = [](int from, int to) { return (from + to + 1) / 2; };
    return {between(one.red, other.red), between(one.green, other.green), between(one.blue, other.blue)};
}

// The four texels that a DXT1 block chooses from. Where its first colour is not above the second, the last is nothing.
std::array<Texel, 4> paletteOf(const std::uint8_t* block) {
    const int first = block[0] | block[1] << 8;
    const int second = block[2] | block[3] << 8;
    const Colour one = colourOf(first);
    const Colour other = colourOf(second);
    if (first > second) {
        return {opaque(one), opaque(other), opaque(third(one, other, 1)), opaque(third(one, other, 2))};
    }
    return {opaque(one), opaque(other), opaque(half(one, other)), 0};
}

// The texels of a block: four rows, each in one byte, of four choices of two bits.
using BlockTexels = std::array<std::array<Texel, blockTexels>, blockTexels>;

BlockTexels unpackBlock(const std::uint8_t* block) {
    const std::array<Texel, 4> palette = paletteOf(block);
    BlockTexels texels;
    for (std::size_t row = 0; row < blockTexels; ++row) {
        const unsigned int choices = block[4 + row];
        texels[row] = {palette[choices & 3u], palette[choices >> 2 & 3u], palette[choices >> 4 & 3u],
                       palette[choices >> 6]};
    }
    return texels;
}

// `height` rows of `width` texels each, from their blocks.
void unpack(const std::uint8_t* block, std::size_t width, std::size_t height, Texel* texels) {
    for (std::size_t top = 0; top < height; top += blockTexels) {
        const std::size_t rows = std::min(blockTexels, height - top);
        for (std::size_t left = 0; left < width; left += blockTexels, block += blockBytes) {
            const BlockTexels unpacked = unpackBlock(block);
            const std::size_t columns = std::min(blockTexels, width - left);
            Texel* place = texels + top * width + left;
            for (std::size_t row = 0; row < rows; ++row, place += width) {
                if (columns == blockTexels) {
                    std::memcpy(place, unpacked[row].data(), sizeof unpacked[row]); // nearly all; one move
                } else {
                    std::copy_n(unpacked[row].begin(), columns, place);
                }
            }
        }
    }
}

std::size_t bytesOfBlocks(std::size_t width, std::size_t height) {
    return (width + blockTexels - 1) / blockTexels * ((height + blockTexels - 1) / blockTexels) * blockBytes;
}

// In place of glTextureStorage2D.
void storeUnpacked(GLuint texture, GLsizei levels, GLenum format, GLsizei width, GLsizei height) {
    driver.textureStorage2D(
        texture, levels, format == GL_COMPRESSED_RGBA_S3TC_DXT1_EXT ? unpackedFormat : format, width, height);
}

// In place of glCompressedTextureSubImage2D, for whole levels, which are all that the game hands over.
void uploadUnpacked(GLuint texture, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                    GLenum format, GLsizei bytes, const void* blocks) {
    const auto columns = static_cast<std::size_t>(std::max(width, 0));
    const auto rows = static_cast<std::size_t>(std::max(height, 0));
    if (format != GL_COMPRESSED_RGBA_S3TC_DXT1_EXT ||
        static_cast<std::size_t>(bytes) != bytesOfBlocks(columns, rows)) {
        driver.compressedTextureSubImage2D(texture, level, x, y, width, height, format, bytes, blocks);
        return;
    }
    // Some rows at a time, in memory that stays warm: a whole level's would come new from the system, which takes longer than
    // the unpacking does.
    const std::size_t rowsOfBlocks =
        std::max<std::size_t>(1, texelsAtATime / std::max<std::size_t>(columns, 1) / blockTexels);
    const std::size_t most = std::min(rowsOfBlocks * blockTexels, rows);
    std::vector<Texel> texels(columns * most);
    const auto* block = static_cast<const std::uint8_t*>(blocks);
    for (std::size_t top = 0; top < rows; top += most) {
        const std::size_t count = std::min(most, rows - top);
        unpack(block, columns, count, texels.data());
        driver.textureSubImage2D(texture, level, x, y + static_cast<GLint>(top), width,
                                 static_cast<GLsizei>(count), texelOrder, texelType, texels.data());
        block += bytesOfBlocks(columns, count);
    }
}

template <typename Function> bool find(Function*& pointer, const char* name, GlLookup lookup) {
    const GlFunction answer = lookup(name);
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        return false;
    }
    pointer = reinterpret_cast<Function*>(answer);
    return true;
}

} // namespace

void unpackTexturesInSoftware(GlLookup driverLookup, GlLookup systemLibrary) {
    if (isGlDoneInSoftware(systemLibrary) &&
        find(driver.textureSubImage2D, "glTextureSubImage2D", driverLookup)) {
        driver.textureStorage2D = glTextureStorage2D;
        driver.compressedTextureSubImage2D = glCompressedTextureSubImage2D;
        glTextureStorage2D = storeUnpacked;
        glCompressedTextureSubImage2D = uploadUnpacked;
    }
}

} // namespace dunkman::platform
