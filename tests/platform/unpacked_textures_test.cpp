#include "platform/unpacked_textures.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "app/reset.h"
#include "render/gl.h"

namespace dunkman::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texel = std::array<std::uint8_t, 4>;
using Block = std::array<std::uint8_t, 8>;

struct Driver {
    std::string renderer = "llvmpipe (LLVM 15.0.6, 256 bits)";
    std::string missing;
    GLenum format = 0; // of what was stored last
    std::vector<std::string> calls;
    std::vector<Texel> texels; // that came last
};

Driver driver;

constexpr GLenum rgba8 = 0x8058;
constexpr GLenum dxt1 = GL_COMPRESSED_RGBA_S3TC_DXT1_EXT;

const std::uint8_t* getString(GLenum) {
    return reinterpret_cast<const std::uint8_t*>(driver.renderer.c_str());
}

void storage(GLuint name, GLsizei levels, GLenum format, GLsizei width, GLsizei height) {
    driver.format = format;
    driver.calls.push_back("storage " + std::to_string(name) + ": " + std::to_string(width) + 'x' +
                           std::to_string(height) + ", levels " + std::to_string(levels));
}

void compressedSubImage(GLuint name, GLint level, GLint, GLint, GLsizei, GLsizei, GLenum, GLsizei bytes,
                        const void*) {
    driver.calls.push_back("blocks " + std::to_string(name) + ", level " + std::to_string(level) +
                           ", bytes " + std::to_string(bytes));
}

void subImage(GLuint name, GLint level, GLint x, GLint y, GLsizei width, GLsizei height, GLenum, GLenum,
              const void* texels) {
    driver.calls.push_back("texels " + std::to_string(name) + ", level " + std::to_string(level) + ": " +
                           std::to_string(width) + 'x' + std::to_string(height) + " at " + std::to_string(x) +
                           ',' + std::to_string(y));
    driver.texels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::memcpy(driver.texels.data(), texels, driver.texels.size() * sizeof(Texel));
}

template <typename Function> GlFunction address(Function* function) {
    return reinterpret_cast<GlFunction>(function);
}

GlFunction ask(const char* name) {
    static const std::map<std::string, GlFunction> functions = {{"glGetString", address(getString)},
                                                                {"glTextureSubImage2D", address(subImage)}};
    return name == driver.missing || !functions.contains(name) ? nullptr : functions.at(name);
}

class UnpackedTextures : public testing::Test {
protected:
    UnpackedTextures() {
        driver = Driver();
        connect();
    }
    ~UnpackedTextures() override { resetProgram(); }

    static void connect() {
        glTextureStorage2D = storage;
        glCompressedTextureSubImage2D = compressedSubImage;
        unpackTexturesInSoftware(ask, ask);
    }

    static void upload(GLsizei width, GLsizei height, const std::vector<Block>& blocks) {
        glCompressedTextureSubImage2D(1, 0, 0, 0, width, height, dxt1,
                                      static_cast<GLsizei>(8 * blocks.size()), blocks.data());
    }

    // Two colours of 16 bits, and the indices of a row, the same in each.
    static Block block(unsigned int first, unsigned int second, unsigned int row) {
        const auto byte = [](unsigned int value) { return static_cast<std::uint8_t>(value & 0xFF); };
        return {byte(first), byte(first >> 8), byte(second), byte(second >> 8),
                byte(row),   byte(row),        byte(row),    byte(row)};
    }
};

constexpr unsigned int inOrder = 0xE4; // indices 0, 1, 2, 3 from the left

TEST_F(UnpackedTextures, AreStoredAsTexels) {
    glTextureStorage2D(7, 3, dxt1, 64, 32);
    EXPECT_THAT(driver.calls, ElementsAre("storage 7: 64x32, levels 3"));
    EXPECT_EQ(driver.format, rgba8);
}

TEST_F(UnpackedTextures, TakeTheTexelsOfEachLevelInPlaceOfItsBlocks) {
    const std::vector<Block> blocks(2);
    glCompressedTextureSubImage2D(7, 2, 0, 0, 8, 4, dxt1, 16, blocks.data());
    EXPECT_THAT(driver.calls, ElementsAre("texels 7, level 2: 8x4 at 0,0"));
}

TEST_F(UnpackedTextures, MixTwoColoursByThirdsWhereTheFirstIsAboveTheSecond) {
    upload(4, 1, {block(0xF800, 0x001F, inOrder)}); // red, blue
    EXPECT_THAT(driver.texels, ElementsAre(Texel{255, 0, 0, 255}, Texel{0, 0, 255, 255},
                                           Texel{170, 0, 84, 255}, Texel{85, 0, 169, 255}));
}

TEST_F(UnpackedTextures, MixThemByHalvesAndLeaveTheLastTransparentWhereItIsNot) {
    upload(4, 1, {block(0x001F, 0xF800, inOrder)}); // blue, red
    EXPECT_THAT(driver.texels, ElementsAre(Texel{0, 0, 255, 255}, Texel{255, 0, 0, 255},
                                           Texel{128, 0, 128, 255}, Texel{0, 0, 0, 0}));
}

TEST_F(UnpackedTextures, SpreadFiveAndSixBitsOverEight) {
    upload(1, 1, {block(0x8410, 0, 0)}); // 16 of 31, 32 of 63, 16 of 31
    EXPECT_THAT(driver.texels, ElementsAre(Texel{132, 130, 132, 255}));
}

TEST_F(UnpackedTextures, LeaveOutWhatLiesBeyondThePicture) {
    const Block red = block(0xF800, 0, 0);
    const Block green = block(0x07E0, 0, 0);
    const Block blue = block(0x001F, 0x0000, 0);
    const Block white = block(0xFFFF, 0, 0);
    upload(5, 5, {red, green, blue, white});
    ASSERT_EQ(driver.texels.size(), 25u);
    EXPECT_EQ(driver.texels[3], (Texel{255, 0, 0, 255}));
    EXPECT_EQ(driver.texels[4], (Texel{0, 255, 0, 255}));
    EXPECT_EQ(driver.texels[20], (Texel{0, 0, 255, 255}));
    EXPECT_EQ(driver.texels[24], (Texel{255, 255, 255, 255}));
}

TEST_F(UnpackedTextures, ComeSomeRowsAtATimeWhereThePictureIsLarge) {
    const Block red = block(0xF800, 0, 0);
    const Block green = block(0x07E0, 0, 0);
    std::vector<Block> blocks(64 * 64, red); // 256 by 256 texels
    blocks.resize(64 * 66, green);           // and eight rows more
    upload(256, 264, blocks);
    EXPECT_EQ(driver.calls.back(), "texels 1, level 0: 256x8 at 0,256");
    EXPECT_EQ(driver.calls[driver.calls.size() - 2], "texels 1, level 0: 256x64 at 0,192");
    EXPECT_EQ(driver.texels.front(), (Texel{0, 255, 0, 255}));
    EXPECT_EQ(driver.texels.back(), (Texel{0, 255, 0, 255}));
}

TEST_F(UnpackedTextures, LeaveToTheDriverWhatIsNoWholeLevelOfBlocks) {
    const std::vector<Block> blocks(2);
    glCompressedTextureSubImage2D(7, 0, 0, 0, 8, 8, dxt1, 16, blocks.data());
    constexpr GLenum dxt5 = 0x83F3;
    glCompressedTextureSubImage2D(7, 0, 0, 0, 4, 4, dxt5, 16, blocks.data());
    EXPECT_THAT(driver.calls, ElementsAre("blocks 7, level 0, bytes 16", "blocks 7, level 0, bytes 16"));
    glTextureStorage2D(7, 1, dxt5, 4, 4);
    EXPECT_EQ(driver.format, dxt5);
}

TEST_F(UnpackedTextures, AreNotForAGraphicsCard) {
    driver.renderer = "NVIDIA GeForce GTX 1050/PCIe/SSE2";
    connect();
    EXPECT_EQ(glTextureStorage2D, storage);
    EXPECT_EQ(glCompressedTextureSubImage2D, compressedSubImage);
    EXPECT_THAT(driver.calls, IsEmpty());
}

TEST_F(UnpackedTextures, AreNotForADriverThatLacksWhatTheyNeed) {
    for (const char* const name : {"glGetString", "glTextureSubImage2D"}) {
        driver.missing = name;
        connect();
        EXPECT_EQ(glTextureStorage2D, storage) << name;
    }
}

} // namespace
} // namespace dunkman::platform
