#include "tools/frames/unseen.h"

#include "render/gl.h"

namespace dunkman::frames {

namespace {

// The driver's own, behind those that stand in their place.
void (*enableByDriver)(GLenum) = nullptr;
void (*disableByDriver)(GLenum) = nullptr;

void enableButDiscard(GLenum capability) {
    if (capability != GL_RASTERIZER_DISCARD) {
        enableByDriver(capability);
    }
}

void disableButDiscard(GLenum capability) {
    if (capability != GL_RASTERIZER_DISCARD) {
        disableByDriver(capability);
    }
}

} // namespace

Unseen::Unseen() {
    enableByDriver = glEnable;
    disableByDriver = glDisable;
    glEnable(GL_RASTERIZER_DISCARD);
    glEnable = enableButDiscard;
    glDisable = disableButDiscard;
}

Unseen::~Unseen() {
    glEnable = enableByDriver;
    glDisable = disableByDriver;
    glDisable(GL_RASTERIZER_DISCARD);
}

} // namespace dunkman::frames
