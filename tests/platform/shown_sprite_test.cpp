#include "platform/offscreen/offscreen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <set>
#include <vector>

#include "base/frame_state_writer.h"
#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "render/gl.h"
#include "render/nearest_first.h"
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

class Dice {
public:
    explicit Dice(std::uint32_t firstSeed) : seed(firstSeed) {}

    std::uint8_t byte() {
        seed = seed * 1664525u + 1013904223u;
        return static_cast<std::uint8_t>(seed >> 24);
    }
    double between(double least, double most) { return least + (most - least) * byte() / 255.0; }
    bool isSix() { return byte() < 43; }

private:
    std::uint32_t seed;
};

// 64 by 64 texels of any colour, many of them transparent; every level shows something else.
Texture2D confetti() {
    Dice dice(1);
    Texture2D texture;
    texture.width = texture.height = 64;
    texture.levels = 5;
    glCreateTextures(GL_TEXTURE_2D, 1, &texture.name);
    glTextureStorage2D(texture.name, texture.levels, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 64, 64);
    for (GLint level = 0; level < texture.levels; ++level) {
        const GLsizei side = 64 >> level;
        std::vector<std::uint8_t> blocks(static_cast<std::size_t>(side) * static_cast<std::size_t>(side) / 2);
        for (std::uint8_t& byte : blocks) {
            byte = dice.byte();
        }
        glCompressedTextureSubImage2D(texture.name, level, 0, 0, side, side, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT,
                                      static_cast<GLsizei>(blocks.size()), blocks.data());
    }
    return texture;
}

constexpr Matrix4 identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

// Ten units away: shows what lies between -10 and 10.
constexpr Matrix4 perspective = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, -1, 0, 0, 9, 10};

// What is done otherwise where OpenGL is done in software changes no pixel.
class ShownInSoftware : public ShownSprite {
protected:
    ShownInSoftware() {
        simulated::machine.clientSize = {200, 200};
        writable::frameState.clientWidth = 200;
        writable::frameState.clientHeight = 200;
        simulated::loadGlFunctions();
        inData(createRenderer);
        glViewport(0, 0, 200, 200);
    }
    ~ShownInSoftware() override { writable::frameState = {}; }

    using Pixels = std::vector<std::uint8_t>;

    static Pixels shown(const Matrix4& view, void (*drawSprites)()) {
        setViewProjection(view);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        drawNearestFirst(drawSprites);
        return offscreen::takePicture().rgb;
    }

    // How many pixels are drawn otherwise; no picture without something to see.
    static std::size_t difference(const Matrix4& view, void (*drawSprites)()) {
        const Pixels before = shown(view, drawSprites);
        EXPECT_GT(std::set<std::uint8_t>(before.begin(), before.end()).size(), 200u);
        inData(prepareForSoftware);
        const Pixels after = shown(view, drawSprites);
        std::size_t count = 0;
        for (std::size_t i = 0; i < before.size(); i += 3) {
            count += std::equal(&before[i], &before[i] + 3, &after[i]) ? 0u : 1u;
        }
        return count;
    }
};

// Sprites that turn, shrink and are tinted, one over the other, and one among them that is adjusted.
TEST_F(ShownInSoftware, PlainSpritesLookAsTheBasicProgramDrawsThem) {
    EXPECT_EQ(difference(identity,
                         [] {
                             const Texture2D texture = confetti();
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
                         }),
              0u);
}

// Depths are few, so that many are equal; what stands, what lies and what hangs are mixed, in every size and place, some
// turned, some outside the picture.
void drawPile(std::uint32_t seed) {
    Dice dice(seed);
    const Texture2D texture = confetti();
    for (int count = 0; count < 400; ++count) {
        const bool isFlat = dice.isSix();
        const double side = dice.isSix() ? 20.0 : 3.0;
        dunkman::draw({.texture = texture,
                       .mirrorX = dice.byte() < 128,
                       .mirrorY = dice.byte() < 128,
                       .mode = isFlat         ? SpriteMode::Flat
                               : dice.isSix() ? SpriteMode::Interface
                                              : SpriteMode::World,
                       .gain = dice.isSix() ? 1.5 : 1.0,
                       .position = {dice.between(-12.0, 12.0), std::round(dice.between(-12.0, 12.0))},
                       .size = {dice.between(0.1, side), dice.between(0.1, side)},
                       .pivot = {dice.between(0.0, 1.0), dice.isSix() ? 0.0 : 0.5},
                       .angle = dice.isSix() ? dice.between(-180.0, 180.0) : 0.0,
                       .zOffset = std::round(dice.between(-3.0, 3.0)) * (isFlat ? 0.5 : 1.0)});
    }
}

TEST_F(ShownInSoftware, APileLooksAlikeFromTheFrontAndAsItComes) {
    EXPECT_EQ(difference(perspective, [] { drawPile(1); }), 0u);
}

TEST_F(ShownInSoftware, APileLooksAlikeInAParallelView) {
    constexpr Matrix4 parallel = {0.1f, 0, 0, 0, 0, 0.1f, 0, 0, 0, 0, -0.01f, 0, 0, 0, 0, 1};
    EXPECT_EQ(difference(parallel, [] { drawPile(2); }), 0u);
}

// From half as many pixels as texels to three times as many, in small steps, straight and turned.
TEST_F(ShownInSoftware, SpritesOfAnySizeLookAsTheSpriteSamplerShowsThem) {
    EXPECT_EQ(difference(perspective,
                         [] {
                             const Texture2D texture = confetti();
                             constexpr double texelsAsPixels = 6.4; // units
                             for (int count = 0; count < 250; ++count) {
                                 const double side = texelsAsPixels * (0.5 + 0.01 * count);
                                 dunkman::draw({.texture = texture,
                                                .position = {-10.0 + 0.04 * count, 10.0 - 0.08 * count},
                                                .size = {side, side},
                                                .angle = count % 4 == 0 ? 1.7 * count : 0.0});
                             }
                         }),
              0u);
}

} // namespace
} // namespace dunkman
