#include "render/warm_up.h"

#include "render/image_table.h"
#include "render/sprite.h"

namespace dunkman {

void drawUnseen(const Texture2D& texture) {
    draw({.texture = texture, .mode = SpriteMode::Interface, .size = {0.0, 0.0}, .pivot = {0.0, 0.0}});
}

void warmUpDriver() {
    for (const auto& [key, texture] : pictures.imageTable) {
        drawUnseen(texture);
    }
    for (const Texture2D& texture : pictures.glyphTable) {
        drawUnseen(texture);
    }
}

} // namespace dunkman
