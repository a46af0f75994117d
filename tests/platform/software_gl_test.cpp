#include "platform/software_gl.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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

} // namespace
} // namespace dunkman::platform
