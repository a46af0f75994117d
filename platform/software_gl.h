#pragma once

#include "render/gl_loader.h"

namespace dunkman::platform {

// Whether OpenGL is done by this machine's processor instead of a graphics card: there a pixel is dear, and what is not
// drawn or copied is worth a thought. A context must be current.
bool isGlDoneInSoftware(GlLookup systemLibrary);

} // namespace dunkman::platform
