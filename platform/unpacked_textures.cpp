#include "platform/unpacked_textures.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "render/gl.h"

namespace dunkman::platform {

namespace {

// Values of the OpenGL registry that nothing else in the game uses.
constexpr GLenum rendererName = 0x1F01;   // GL_RENDERER
constexpr GLenum texelOrder = 0x1908;     // GL_RGBA
constexpr GLenum texelType = 0x1401;      // GL_UNSIGNED_BYTE
constexpr GLenum unpackedFormat = 0x8058; // GL_RGBA8

// Both of Mesa, whose rounding is the one below.
constexpr std::array<std::string_view, 2> softwareRenderers = {"llvmpipe", "softpipe"};

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

using Texel = std::array<std::uint8_t, 4>; // red, green, blue, alpha

// 5, 6 and 5 bits, spread over 8.
Texel colourOf(unsigned int packed) {
    const unsigned int red = packed >> 11;
    const unsigned int green = packed >> 5 & 0x3F;
    const unsigned int blue = packed & 0x1F;
    return {static_cast<std::uint8_t>(red << 3 | red >> 2),
            static_cast<std::uint8_t>(green << 2 | green >> 4),
            static_cast<std::uint8_t>(blue << 3 | blue >> 2), 255};
}

// A third of the way from the one to the other, or two; thirds in 256ths, as Mesa has them.
Texel third(const Texel& one, const Texel& other, int thirds) {
    Texel result = {0, 0, 0, 255};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const int way = other[channel] - one[channel];
        result[channel] = static_cast<std::uint8_t>(one[channel] + (way * 85 * thirds >> 8));
    }
    return result;
}

Texel half(const Texel& one, const Texel& other) {
    Texel result = {0, 0, 0, 255};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        result[channel] = static_cast<std::uint8_t>((one[channel] + other[channel] + 1) / 2);
    }
    return result;
}

// The four texels that a DXT1 block chooses from. Where its first colour is not above the second, the last is nothing.
std::array<Texel, 4> paletteOf(const std::uint8_t* block) {
    const unsigned int first = block[0] | static_cast<unsigned int>(block[1]) << 8;
    const unsigned int second = block[2] | static_cast<unsigned int>(block[3]) << 8;
    const Texel one = colourOf(first);
    const Texel other = colourOf(second);
    if (first > second) {
        return {one, other, third(one, other, 1), third(one, other, 2)};
    }
    return {one, other, half(one, other), Texel{0, 0, 0, 0}};
}

// Row by row, from `width` by `height` texels' worth of blocks.
std::vector<Texel> unpack(const std::uint8_t* block, std::size_t width, std::size_t height) {
    std::vector<Texel> texels(width * height);
    for (std::size_t top = 0; top < height; top += blockTexels) {
        for (std::size_t left = 0; left < width; left += blockTexels) {
            const std::array<Texel, 4> palette = paletteOf(block);
            const std::size_t rows = std::min(blockTexels, height - top);
            const std::size_t columns = std::min(blockTexels, width - left);
            for (std::size_t row = 0; row < rows; ++row) {
                unsigned int choices = block[4 + row];
                for (std::size_t column = 0; column < columns; ++column) {
                    texels[(top + row) * width + left + column] = palette[choices & 3u];
                    choices >>= 2;
                }
            }
            block += blockBytes;
        }
    }
    return texels;
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
    const std::vector<Texel> texels = unpack(static_cast<const std::uint8_t*>(blocks), columns, rows);
    driver.textureSubImage2D(texture, level, x, y, width, height, texelOrder, texelType, texels.data());
}

template <typename Function> bool find(Function*& pointer, const char* name, GlLookup lookup) {
    const GlFunction answer = lookup(name);
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        return false;
    }
    pointer = reinterpret_cast<Function*>(answer);
    return true;
}

bool isSoftware(GlLookup systemLibrary) {
    const std::uint8_t* (*getString)(GLenum name) = nullptr;
    if (!find(getString, "glGetString", systemLibrary)) {
        return false;
    }
    const std::uint8_t* const answer = getString(rendererName);
    const std::string_view renderer = answer == nullptr ? "" : reinterpret_cast<const char*>(answer);
    return std::any_of(softwareRenderers.begin(), softwareRenderers.end(),
                       [renderer](std::string_view name) { return renderer.starts_with(name); });
}

} // namespace

void unpackTexturesInSoftware(GlLookup driverLookup, GlLookup systemLibrary) {
    if (isSoftware(systemLibrary) && find(driver.textureSubImage2D, "glTextureSubImage2D", driverLookup)) {
        driver.textureStorage2D = glTextureStorage2D;
        driver.compressedTextureSubImage2D = glCompressedTextureSubImage2D;
        glTextureStorage2D = storeUnpacked;
        glCompressedTextureSubImage2D = uploadUnpacked;
    }
}

} // namespace dunkman::platform
