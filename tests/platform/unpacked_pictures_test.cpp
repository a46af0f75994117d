#include <EGL/egl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "platform/offscreen/offscreen.h"
#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "render/gl.h"
#include "render/gl_loader.h"
#include "render/renderer.h"
#include "render/sprite.h"
#include "render/view.h"

// A real OpenGL in software draws the same with and without its textures unpacked.
namespace dunkman {
namespace {

GlFunction lookUp(const char* name) { return eglGetProcAddress(name); }

class UnpackedPictures : public testing::Test {
protected:
    UnpackedPictures() {
        platform::resetMachine();
        simulated::machine.clientSize = {320, 240};
        simulated::loadGlFunctions();
        const std::filesystem::path before = std::filesystem::current_path();
        std::filesystem::current_path("data");
        createRenderer();
        std::filesystem::current_path(before);
        glViewport(0, 0, 320, 240);
        setViewProjection({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }

    ~UnpackedPictures() override {
        resetRenderer();
        platform::resetMachine();
    }

    // Blocks of any colours, every other one with transparent texels, down to the smallest level.
    static Texture2D anyTexture(GLsizei width, GLsizei height) {
        std::mt19937 random(static_cast<std::mt19937::result_type>(width * 1000 + height));
        Texture2D texture;
        texture.width = static_cast<std::uint32_t>(width);
        texture.height = static_cast<std::uint32_t>(height);
        glCreateTextures(GL_TEXTURE_2D, 1, &texture.name);
        constexpr GLsizei levels = 7;
        glTextureStorage2D(texture.name, levels, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, width, height);
        for (GLint level = 0; level < levels; ++level) {
            const GLsizei across = std::max(width >> level, 1);
            const GLsizei down = std::max(height >> level, 1);
            std::vector<std::uint8_t> blocks(8 *
                                             static_cast<std::size_t>((across + 3) / 4 * ((down + 3) / 4)));
            for (std::uint8_t& byte : blocks) {
                byte = static_cast<std::uint8_t>(random());
            }
            glCompressedTextureSubImage2D(texture.name, level, 0, 0, across, down,
                                          GL_COMPRESSED_RGBA_S3TC_DXT1_EXT,
                                          static_cast<GLsizei>(blocks.size()), blocks.data());
        }
        return texture;
    }

    // From enlarged to far smaller, upright and turned.
    static std::vector<std::uint8_t> pictureOfTextures() {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        double angle = 0.0;
        for (const Texture2D& texture : {anyTexture(64, 64), anyTexture(200, 120), anyTexture(33, 7)}) {
            double size = 1.5;
            for (double x = -0.9; x < 0.9; x += 0.3) {
                draw({.texture = texture,
                      .position = {x, -x},
                      .size = {size, size},
                      .pivot = {0.5, 0.5},
                      .angle = angle,
                      .zOffset = x / 2});
                size *= 0.6;
                angle += 0.2;
            }
        }
        return offscreen::takePicture().rgb;
    }
};

TEST_F(UnpackedPictures, AreThoseOfTheCompressedTextures) {
    if (offscreen::driverName().find("llvmpipe") == std::string::npos) {
        GTEST_SKIP() << "drawn by a graphics card: " << offscreen::driverName();
    }
    const auto storeUnpacked = glTextureStorage2D;
    const std::vector<std::uint8_t> unpacked = pictureOfTextures();
    loadGlFunctions(lookUp, lookUp); // the driver's own again
    ASSERT_NE(glTextureStorage2D, storeUnpacked) << "nothing is compared";
    const std::vector<std::uint8_t> packed = pictureOfTextures();
    EXPECT_EQ(unpacked, packed);
    EXPECT_LT(std::count(packed.begin(), packed.end(), 0), 200000) << "an empty picture";
}

} // namespace
} // namespace dunkman
