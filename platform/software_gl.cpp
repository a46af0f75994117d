#include "platform/software_gl.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "render/gl.h"

namespace dunkman::platform {

namespace {

// Of the OpenGL registry.
constexpr GLenum rendererName = 0x1F01; // GL_RENDERER
constexpr GLenum versionName = 0x1F02;  // GL_VERSION
constexpr GLenum alphaBits = 0x0D55;    // GL_ALPHA_BITS
constexpr GLenum texelFormat = 0x8058;  // GL_RGBA8

constexpr GLsizei largePieceSide = 2048; // texels; 16 MB of them

// Both of Mesa, whose rounding unpacked_textures.cpp follows.
constexpr std::array<std::string_view, 2> softwareRenderers = {"llvmpipe", "softpipe"};

// What the driver says of itself; nothing where it does not.
std::string_view stringOf(GLenum name, GlLookup systemLibrary) {
    const GlFunction address = systemLibrary("glGetString");
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(address))) {
        return {};
    }
    using GetString = const std::uint8_t* (*)(GLenum name);
    const std::uint8_t* const answer = reinterpret_cast<GetString>(address)(name);
    return answer == nullptr ? "" : reinterpret_cast<const char*>(answer);
}

bool hasWindowAlpha(GlLookup systemLibrary) {
    const GlFunction address = systemLibrary("glGetIntegerv");
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(address))) {
        return false;
    }
    using GetIntegers = void (*)(GLenum name, GLint * values);
    GLint bits = 0;
    reinterpret_cast<GetIntegers>(address)(alphaBits, &bits);
    return bits > 0;
}

} // namespace

bool isGlDoneInSoftware(GlLookup systemLibrary) {
    const std::string_view renderer = stringOf(rendererName, systemLibrary);
    return std::any_of(softwareRenderers.begin(), softwareRenderers.end(),
                       [renderer](std::string_view name) { return renderer.starts_with(name); });
}

bool copiesRowsAsMemory(GlLookup systemLibrary) {
    return isGlDoneInSoftware(systemLibrary) &&
           (hasWindowAlpha(systemLibrary) ||
            stringOf(versionName, systemLibrary).find(" Mesa 22.") != std::string_view::npos);
}

void keepMemoryInSoftware(GlLookup systemLibrary) {
    if (!isGlDoneInSoftware(systemLibrary)) {
        return;
    }
    GLuint largePiece = 0;
    glCreateTextures(GL_TEXTURE_2D, 1, &largePiece);
    glTextureStorage2D(largePiece, 1, texelFormat, largePieceSide, largePieceSide);
    glDeleteTextures(1, &largePiece);
}

} // namespace dunkman::platform
