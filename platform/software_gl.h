#pragma once

#include "render/gl_loader.h"

namespace dunkman::platform {

// Whether OpenGL is done by this machine's processor instead of a graphics card: there a pixel is dear, and what is not
// drawn or copied is worth a thought. A context must be current.
bool isGlDoneInSoftware(GlLookup systemLibrary);

// Whether, in software, a row of a framebuffer object that is copied to a row of the window is copied as memory: so with
// Mesa 22 (2.2 ms for 1920 by 1080, the whole drawn as a picture 17), not so with Mesa 25 (126 instead of 36). A context
// must be current.
bool copiesRowsAsMemory(GlLookup systemLibrary);

} // namespace dunkman::platform
