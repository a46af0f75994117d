#include "platform/software_gl.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "render/gl.h"

namespace dunkman::platform {

namespace {

constexpr GLenum rendererName = 0x1F01; // GL_RENDERER of the OpenGL registry

// Both of Mesa, whose rounding unpacked_textures.cpp follows.
constexpr std::array<std::string_view, 2> softwareRenderers = {"llvmpipe", "softpipe"};

} // namespace

bool isGlDoneInSoftware(GlLookup systemLibrary) {
    const GlFunction address = systemLibrary("glGetString");
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(address))) {
        return false;
    }
    using GetString = const std::uint8_t* (*)(GLenum name);
    const std::uint8_t* const answer = reinterpret_cast<GetString>(address)(rendererName);
    const std::string_view renderer = answer == nullptr ? "" : reinterpret_cast<const char*>(answer);
    return std::any_of(softwareRenderers.begin(), softwareRenderers.end(),
                       [renderer](std::string_view name) { return renderer.starts_with(name); });
}

} // namespace dunkman::platform
