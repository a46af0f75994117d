#include "screens/backdrop.h"

#include "platform/platform.h"
#include "render/binding_state.h"
#include "render/clear.h"
#include "render/gl.h"
#include "render/renderer.h"

namespace dunkman {

namespace {

KeptBackdrop kept;

void drawWithoutDepthWrites(const Sprite& sprite) {
    finishClear(); // which is a depth write, too
    glDepthMask(GLboolean{0});
    draw(sprite);
    glDepthMask(GLboolean{1});
}

} // namespace

void drawBackdrop(const Sprite& sprite) {
    if (!isPreparedForSoftware()) {
        drawWithoutDepthWrites(sprite);
        return;
    }
    if (bindingState.isDiscarding) {
        return;
    }
    const KeptBackdrop wanted = {sprite, currentView()};
    if (wanted == kept && platform::bringPictureBack()) {
        finishClearAroundCopy();
        return;
    }
    drawWithoutDepthWrites(sprite);
    platform::keepPicture();
    kept = wanted;
}

void resetBackdrop() { kept = {}; }

} // namespace dunkman
