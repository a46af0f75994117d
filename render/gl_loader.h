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

// Whether a driver's answer means that it does not know the name: drivers say so with 0, 1, 2, 3 or -1.
constexpr bool isMissingGlFunction(std::intptr_t answer) { return answer >= -1 && answer <= 3; }

// Windows alone: loads from opengl32.dll and wglGetProcAddress. A context must be current.
void loadGlFunctionsFromWindows();

} // namespace dunkman
