#include "platform/offscreen/offscreen.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <set>
#include <vector>

#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "render/gl.h"
#include "render/renderer.h"
#include "render/sprite.h"
#include "render/view.h"

// What the shipped shaders make of a sprite, drawn by a real OpenGL in software.
namespace dunkman {
namespace {

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

void expectClose(Colour drawn, Colour expected) {
    EXPECT_NEAR(drawn.red, expected.red, 1);
    EXPECT_NEAR(drawn.green, expected.green, 1);
    EXPECT_NEAR(drawn.blue, expected.blue, 1);
}

struct Adjustment {
    double gamma = 1.0;
    double gain = 1.0;
    double saturation = 1.0;
};

class ShownSprite : public testing::Test {
protected:
    ShownSprite() {
        platform::resetMachine();
        simulated::machine.clientSize = {8, 8};
        simulated::loadGlFunctions();
        inData(createRenderer);
        glViewport(0, 0, 8, 8);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        setViewProjection({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }

    ~ShownSprite() override {
        resetRenderer();
        platform::resetMachine();
    }

    // The shaders are read from the working directory.
    static void inData(void (*create)()) {
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path("data");
        create();
        std::filesystem::current_path(before);
    }

    // A picture of one colour, in 5, 6 and 5 bits.
    static Texture2D plain(int red, int green, int blue) {
        const auto packed = static_cast<std::uint16_t>(red << 11 | green << 5 | blue);
        const auto low = static_cast<std::uint8_t>(packed & 0xFF);
        const auto high = static_cast<std::uint8_t>(packed >> 8);
        const std::array<std::uint8_t, 8> block = {low, high, low, high, 0, 0, 0, 0};
        Texture2D texture;
        texture.width = texture.height = 4;
        glCreateTextures(GL_TEXTURE_2D, 1, &texture.name);
        glTextureStorage2D(texture.name, 1, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 4, 4);
        glCompressedTextureSubImage2D(texture.name, 0, 0, 0, 4, 4, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 8,
                                      block.data());
        return texture;
    }

    // Draws it all over the window.
    static void draw(const Texture2D& texture, Adjustment adjustment, SpriteMode mode = SpriteMode::World,
                     double zOffset = 0.0) {
        dunkman::draw({.texture = texture,
                       .mirrorY = true,
                       .mode = mode,
                       .gamma = adjustment.gamma,
                       .gain = adjustment.gain,
                       .saturation = adjustment.saturation,
                       .size = {2.0, 2.0},
                       .zOffset = zOffset});
    }

    // The colour in a row, counted from the top.
    static Colour at(std::size_t row) {
        const offscreen::Picture picture = offscreen::takePicture();
        const std::uint8_t* const pixel = &picture.rgb.at((row * picture.width + 4) * 3);
        return {pixel[0], pixel[1], pixel[2]};
    }
};

TEST_F(ShownSprite, KeepsItsTexelsWhenThereIsNothingToAdjust) {
    draw(plain(25, 11, 3), {});
    const Colour drawn = at(4);
    EXPECT_EQ(drawn.red, 206); // 25 of 31
    EXPECT_EQ(drawn.green, 44);
    EXPECT_EQ(drawn.blue, 24);
}

TEST_F(ShownSprite, GetsBrighterByItsGain) {
    draw(plain(8, 16, 8), {.gain = 2.0});
    expectClose(at(4), {132, 130, 132});
}

TEST_F(ShownSprite, LosesItsColoursWithItsSaturation) {
    draw(plain(31, 0, 0), {.saturation = 0.0});
    expectClose(at(4), {76, 76, 76}); // the share of red in brightness
}

TEST_F(ShownSprite, GetsDarkerInTheMiddleTonesByAHighGamma) {
    draw(plain(16, 32, 16), {.gamma = 2.0});
    expectClose(at(4), {67, 65, 67}); // a half becomes a quarter
}

TEST_F(ShownSprite, GetsBrighterInTheMiddleTonesByALowGamma) {
    draw(plain(8, 16, 8), {.gamma = 0.5});
    EXPECT_GT(at(4).red, 100); // from a quarter
}

TEST_F(ShownSprite, KeepsBlackAndWhiteUnderAnyGamma) {
    draw(plain(31, 63, 31), {.gamma = 3.0});
    expectClose(at(4), {255, 255, 255});
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw(plain(0, 0, 0), {.gamma = 0.2});
    expectClose(at(4), {0, 0, 0});
}

TEST_F(ShownSprite, FillsTheLoadingPictureFromBelow) {
    draw(plain(31, 0, 0), {}, SpriteMode::Loading, 0.5);
    expectClose(at(6), {255, 0, 0});
    expectClose(at(1), {107, 81, 81}); // greyer, and nearer to the middle
}

// 64 by 64 texels of any colour, many of them transparent.
Texture2D confetti() {
    std::uint32_t seed = 1;
    std::array<std::uint8_t, std::size_t{16} * 16 * 8> blocks{};
    for (std::uint8_t& byte : blocks) {
        seed = seed * 1664525u + 1013904223u;
        byte = static_cast<std::uint8_t>(seed >> 24);
    }
    Texture2D texture;
    texture.width = texture.height = 64;
    glCreateTextures(GL_TEXTURE_2D, 1, &texture.name);
    glTextureStorage2D(texture.name, 1, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 64, 64);
    glCompressedTextureSubImage2D(texture.name, 0, 0, 0, 64, 64, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT,
                                  static_cast<GLsizei>(blocks.size()), blocks.data());
    return texture;
}

class ShownPlainSprite : public ShownSprite {
protected:
    ShownPlainSprite() {
        simulated::machine.clientSize = {200, 200};
        simulated::loadGlFunctions();
        inData(createRenderer);
        glViewport(0, 0, 200, 200);
        setViewProjection({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }

    // Sprites that turn, shrink and are tinted, one over the other, and one among them that is adjusted.
    static std::vector<std::uint8_t> shown() {
        const Texture2D texture = confetti();
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (int count = 0; count < 12; ++count) {
            dunkman::draw({.texture = texture,
                           .mirrorX = count % 2 == 0,
                           .mirrorY = true,
                           .mode = count % 3 == 0 ? SpriteMode::Flat : SpriteMode::World,
                           .gain = count == 5 ? 1.5 : 1.0,
                           .tintG = count % 4 == 0 ? 0.7 : 1.0,
                           .position = {0.15 * count - 0.8, 0.1 * count - 0.6},
                           .size = {0.13 * (count + 1), 0.9},
                           .angle = 17.0 * count,
                           .zOffset = 0.001 * count});
        }
        return offscreen::takePicture().rgb;
    }
};

TEST_F(ShownPlainSprite, LooksAsTheBasicProgramDrawsIt) {
    const std::vector<std::uint8_t> basic = shown();
    EXPECT_GT(std::set<std::uint8_t>(basic.begin(), basic.end()).size(), 200u); // there is something to see
    inData(createPlainProgram);
    setViewProjection({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    EXPECT_TRUE(shown() == basic);
}

} // namespace
} // namespace dunkman
