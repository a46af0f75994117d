#include "platform/unseen_draws.h"

#include "platform/software_gl.h"
#include "render/gl.h"

namespace dunkman::platform {

namespace {

struct Driver {
    void (*enable)(GLenum capability) = nullptr;
    void (*disable)(GLenum capability) = nullptr;
    void (*drawArrays)(GLenum mode, GLint first, GLsizei count) = nullptr;
};

Driver driver;
bool isDiscarding = false;

// In place of glEnable.
void enable(GLenum capability) {
    isDiscarding = isDiscarding || capability == GL_RASTERIZER_DISCARD;
    driver.enable(capability);
}

// In place of glDisable.
void disable(GLenum capability) {
    isDiscarding = isDiscarding && capability != GL_RASTERIZER_DISCARD;
    driver.disable(capability);
}

// In place of glDrawArrays. The game's programs write nothing but pixels.
void drawSeenArrays(GLenum mode, GLint first, GLsizei count) {
    if (!isDiscarding) {
        driver.drawArrays(mode, first, count);
    }
}

} // namespace

void skipUnseenDrawsInSoftware(GlLookup systemLibrary) {
    if (isGlDoneInSoftware(systemLibrary)) {
        driver = {glEnable, glDisable, glDrawArrays};
        isDiscarding = false;
        glEnable = enable;
        glDisable = disable;
        glDrawArrays = drawSeenArrays;
    }
}

} // namespace dunkman::platform
