#include "platform/software_gl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

#include "app/reset.h"
#include "render/gl.h"

namespace dunkman::platform {
namespace {

std::string renderer; // what the driver calls itself

const std::uint8_t* getString(GLenum) { return reinterpret_cast<const std::uint8_t*>(renderer.c_str()); }
const std::uint8_t* getNothing(GLenum) { return nullptr; }

GlFunction ask(const char* name) {
    return std::string_view(name) == "glGetString" ? reinterpret_cast<GlFunction>(getString) : nullptr;
}
GlFunction askSilentDriver(const char*) { return reinterpret_cast<GlFunction>(getNothing); }
GlFunction askForNothing(const char*) { return nullptr; }

// Textures as bytes, by name.
std::map<GLuint, std::size_t> stored;
std::size_t mostBytes = 0;

void createTextures(GLenum, GLsizei, GLuint* names) { *names = 7; }
void textureStorage2D(GLuint name, GLsizei, GLenum, GLsizei width, GLsizei height) {
    stored[name] = 4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    mostBytes = std::max(mostBytes, stored[name]);
}
void deleteTextures(GLsizei, const GLuint* names) { stored.erase(*names); }

class MemoryInSoftware : public testing::Test {
protected:
    void SetUp() override {
        stored.clear();
        mostBytes = 0;
        glCreateTextures = createTextures;
        glTextureStorage2D = textureStorage2D;
        glDeleteTextures = deleteTextures;
    }

    void TearDown() override { resetProgram(); }
};

TEST(SoftwareGl, IsKnownByItsName) {
    for (const char* const name : {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe"}) {
        renderer = name;
        EXPECT_TRUE(isGlDoneInSoftware(ask)) << name;
    }
}

TEST(SoftwareGl, IsNoGraphicsCard) {
    for (const char* const name : {"NVIDIA GeForce GTX 1050/PCIe/SSE2", "D3D12 (AMD Radeon)", ""}) {
        renderer = name;
        EXPECT_FALSE(isGlDoneInSoftware(ask)) << name;
    }
}

TEST(SoftwareGl, IsNotSupposedWhereTheDriverDoesNotSay) {
    EXPECT_FALSE(isGlDoneInSoftware(askSilentDriver));
    EXPECT_FALSE(isGlDoneInSoftware(askForNothing));
}

TEST_F(MemoryInSoftware, IsKeptOnceALargePieceCameBack) {
    renderer = "llvmpipe (LLVM 15.0.6, 256 bits)";
    keepMemoryInSoftware(ask);
    EXPECT_EQ(mostBytes, std::size_t{16} << 20);
    EXPECT_TRUE(stored.empty());
}

TEST_F(MemoryInSoftware, IsNoConcernOfAGraphicsCard) {
    renderer = "a graphics card";
    keepMemoryInSoftware(ask);
    EXPECT_EQ(mostBytes, 0u);
}

} // namespace
} // namespace dunkman::platform
