#pragma once

#include "render/gl_loader.h"

namespace dunkman::platform {

// Compressed textures cost a graphics card nothing. An OpenGL that is done in software unpacks eight texels of them anew for
// every pixel that it draws: a third of a frame. There, and only there, this stands between the game and the driver: what
// the game stores as DXT1 is unpacked once and stored as texels, eight times as large. What is drawn is the same, bit for bit.
// After loadGlFunctions and with its context current. Main thread only.
void unpackTexturesInSoftware(GlLookup driverLookup, GlLookup systemLibrary);

} // namespace dunkman::platform
