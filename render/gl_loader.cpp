#include "render/gl_loader.h"

#include <string>

#include "base/fatal.h"
#include "render/gl.h"

namespace dunkman {
namespace {

template <typename Function> void load(Function*& pointer, const char* name, GlLookup lookup) {
    const GlFunction answer = lookup(name);
    if (isMissingGlFunction(reinterpret_cast<std::intptr_t>(answer))) {
        pointer = nullptr;
        fatal(std::string("The game needs OpenGL 4.5, but the graphics driver has no \"") + name +
              "\". Install a current driver for the graphics card.");
    }
    pointer = reinterpret_cast<Function*>(answer);
}

} // namespace

void loadGlFunctions(GlLookup systemLibrary, GlLookup driver) {
#define GL_SYSTEM_FUNCTION(result, name, parameters, arguments) load(name, #name, systemLibrary);
#define GL_FUNCTION(result, name, parameters, arguments) load(name, #name, driver);
#include "render/gl_functions.inc"
#undef GL_FUNCTION
#undef GL_SYSTEM_FUNCTION
}

} // namespace dunkman
