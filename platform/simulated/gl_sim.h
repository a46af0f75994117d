#pragma once

#include <functional>
#include <string_view>

// An OpenGL that draws nothing. It hands out names, finds what a program declares by reading its source text, and
// remembers uniform values, which is all that the game can notice of OpenGL.
namespace dunkman::simulated {

// Points every entry point of render/gl.h here.
void loadGlFunctions();

// Forgets all names, programs and values; names start from 1 again. The trace stays.
void resetGl();

// As platform.h has them.
void keepPicture();
bool bringPictureBack();

// Takes a line, without line end, for every `view` that is set and every sprite that is drawn.
using DrawTrace = std::function<void(std::string_view line)>;

// From now on traces draw calls to `trace`; an empty function ends it, and drawing costs nothing for it again.
void setDrawTrace(DrawTrace trace);

} // namespace dunkman::simulated
