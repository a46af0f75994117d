#pragma once

#include <cstdint>

// Fills the pointers of gl.h.
namespace dunkman {

using GlFunction = void (*)();

// Looks an entry point up by name.
using GlLookup = GlFunction (*)(const char* name);

// Asks the system's OpenGL library for the functions of version 1.1 and the driver for the later ones, in the order
// of the OpenGL registry. Stops the game with a message that names the first function which is missing.
void loadGlFunctions(GlLookup systemLibrary, GlLookup driver);

// Stops the game with the message that `missing` is not there, which names what driver there is instead.
[[noreturn]] void refuseDriver(const char* missing, GlLookup systemLibrary);

// Whether a driver's answer means that it does not know the name: drivers say so with 0, 1, 2, 3 or -1.
constexpr bool isMissingGlFunction(std::intptr_t answer) { return answer >= -1 && answer <= 3; }

// Windows alone: the two lookups, opengl32.dll and wglGetProcAddress. A context must be current.
GlFunction lookUpInSystemLibrary(const char* name);
GlFunction askDriver(const char* name);

} // namespace dunkman
