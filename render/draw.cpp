#include <cassert>
#include <optional>

#include "render/binding_state.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"

namespace dunkman {

void draw(const Sprite& sprite) {
    assert(rendererObjects != nullptr);
    if (std::optional<SoftwareObjects>& software = rendererObjects->software) {
        if (bindingState.isDiscarding) {
            return;
        }
        if (software->queue.isOpen()) {
            software->queue.add(sprite);
            return;
        }
    }
    drawAtOnce(sprite);
}

} // namespace dunkman
