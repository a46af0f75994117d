#include "render/discard.h"

#include <cassert>

#include "render/binding_state_writer.h"
#include "render/gl.h"

namespace dunkman {

PixelsDiscarded::PixelsDiscarded() {
    assert(!bindingState.isDiscarding);
    glEnable(GL_RASTERIZER_DISCARD);
    writable::bindingState.isDiscarding = true;
}

PixelsDiscarded::~PixelsDiscarded() {
    glDisable(GL_RASTERIZER_DISCARD);
    writable::bindingState.isDiscarding = false;
}

} // namespace dunkman
