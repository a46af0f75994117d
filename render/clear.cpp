#include "render/clear.h"

#include <cassert>
#include <utility>

#include "render/binding_state.h"
#include "render/gl.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"

namespace dunkman {
namespace {

void finishClear(GLbitfield buffers) {
    if (isPreparedForSoftware() && std::exchange(rendererObjects->software->isClearDue, false)) {
        assert(!bindingState.isScissored);
        glClear(buffers);
    }
}

} // namespace

void clearPicture() {
    if (isPreparedForSoftware()) {
        rendererObjects->software->isClearDue = !bindingState.isDiscarding;
    } else {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
}

void finishClear() { finishClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); }

void finishClearAroundCopy() { finishClear(GL_DEPTH_BUFFER_BIT); }

} // namespace dunkman
