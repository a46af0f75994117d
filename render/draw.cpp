#include <cassert>

#include "render/renderer_objects.h"
#include "render/sprite.h"

namespace dunkman {

void draw(const Sprite& sprite) {
    assert(rendererObjects != nullptr);
    if (rendererObjects->software && rendererObjects->software->queue.isOpen()) {
        rendererObjects->software->queue.add(sprite, rendererObjects->view);
    } else {
        drawAtOnce(sprite);
    }
}

} // namespace dunkman
