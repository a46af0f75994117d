#pragma once

#include "render/gl_loader.h"

namespace dunkman::platform {

// Of several steps between two swaps only the last is seen; the others are drawn with rasterizer discard. A graphics card
// hardly notices them, but an OpenGL that is done in software finds the corners of every sprite all the same. There, and
// only there, this stands between the game and the driver and keeps from it what would leave no pixel behind. After
// loadGlFunctions and with its context current. Main thread only.
void skipUnseenDrawsInSoftware(GlLookup systemLibrary);

} // namespace dunkman::platform
