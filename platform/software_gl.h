#pragma once

#include "render/gl_loader.h"

namespace dunkman::platform {

// Whether OpenGL is done by this machine's processor instead of a graphics card: there a pixel is dear, and what is not
// drawn or copied is worth a thought. A context must be current.
bool isGlDoneInSoftware(GlLookup systemLibrary);

// Whether, in software, a row of a framebuffer object that is copied to a row of the window is copied as memory: so where the
// window has alpha like the other, as Wine's windows have (2.4 ms for 1920 by 1080, the whole drawn as a picture 14 to 18).
// Without alpha Mesa 22 does so, too, but Mesa 25 draws every row: 130 ms. A context must be current, with the window
// as its framebuffer.
bool copiesRowsAsMemory(GlLookup systemLibrary);

// In software, lets the memory of one frame serve the next. Mesa takes some 10 MB piece by piece while a frame is drawn and
// gives it back after it. The C library that it is built with would give all of it back to the system each time, which then
// clears every page anew: 3 ms of a frame of 50. That library keeps twice as much as the largest piece that ever came back to
// it (mallopt(3), M_MMAP_THRESHOLD), so a large one comes back here. After loadGlFunctions and with its context current.
void keepMemoryInSoftware(GlLookup systemLibrary);

} // namespace dunkman::platform
