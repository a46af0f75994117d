#include "render/gl_loader.h"

#include <windows.h>

namespace dunkman {

// 64-bit Windows has one calling convention, so the pointers to OpenGL need no mark for it; 32-bit Windows would.
static_assert(sizeof(void*) == 8, "the game is a 64-bit program");

GlFunction lookUpInSystemLibrary(const char* name) {
    static const HMODULE library = LoadLibraryA("opengl32.dll");
    return reinterpret_cast<GlFunction>(GetProcAddress(library, name));
}

GlFunction askDriver(const char* name) { return reinterpret_cast<GlFunction>(wglGetProcAddress(name)); }

} // namespace dunkman
