#include "render/gl_loader.h"

#include <string>

#include "base/fatal.h"
#include "render/gl.h"

namespace dunkman {
namespace {

// What the driver says of itself, as far as there is one.
std::string describeDriver(GlLookup systemLibrary) {
    using GetString = const std::uint8_t*(GLenum name);
    constexpr GLenum vendor = 0x1F00;
    constexpr GLenum renderer = 0x1F01;
    constexpr GLenum version = 0x1F02;
    const GlFunction answer = systemLibrary("glGetString");
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        return "none";
    }
    auto* const getString = reinterpret_cast<GetString*>(answer);
    const auto text = [getString](GLenum name) {
        const std::uint8_t* const found = getString(name);
        return found == nullptr ? std::string("unknown") : std::string(reinterpret_cast<const char*>(found));
    };
    return "version " + text(version) + ", vendor " + text(vendor) + ", renderer " + text(renderer);
}

} // namespace

void refuseDriver(const char* missing, GlLookup systemLibrary) {
    fatal(std::string("The game needs OpenGL 4.5, but the graphics driver has no \"") + missing +
          "\". Install a current driver for the graphics card. The driver in use: " +
          describeDriver(systemLibrary) + ".");
}

namespace {

template <typename Function>
void load(Function*& pointer, const char* name, GlLookup lookup, GlLookup systemLibrary) {
    const GlFunction answer = lookup(name);
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        pointer = nullptr;
        refuseDriver(name, systemLibrary);
    }
    pointer = reinterpret_cast<Function*>(answer);
}

} // namespace

void loadGlFunctions(GlLookup systemLibrary, GlLookup driver) {
#define GL_SYSTEM_FUNCTION(result, name, parameters, arguments)                                              \
    load(name, #name, systemLibrary, systemLibrary);
#define GL_FUNCTION(result, name, parameters, arguments) load(name, #name, driver, systemLibrary);
#include "render/gl_functions.inc"
#undef GL_FUNCTION
#undef GL_SYSTEM_FUNCTION
}

} // namespace dunkman
