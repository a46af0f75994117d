#include "render/gl_loader.h"

#include <windows.h>

namespace dunkman {

GlFunction lookUpInSystemLibrary(const char* name) {
    static const HMODULE library = LoadLibraryA("opengl32.dll");
    return reinterpret_cast<GlFunction>(GetProcAddress(library, name));
}

GlFunction askDriver(const char* name) { return reinterpret_cast<GlFunction>(wglGetProcAddress(name)); }

} // namespace dunkman
