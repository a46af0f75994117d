#include "render/warm_up.h"

#include "render/image_table.h"
#include "render/renderer.h"
#include "render/sprite.h"

namespace dunkman {

namespace {

void drawUnseen(const Texture2D& texture, double saturation) {
    draw({.texture = texture,
          .mode = SpriteMode::Interface,
          .saturation = saturation,
          .size = {0.0, 0.0},
          .pivot = {0.0, 0.0}});
}

void drawAllUnseen(double saturation) {
    for (const auto& [key, texture] : pictures.imageTable) {
        drawUnseen(texture, saturation);
    }
    for (const Texture2D& texture : pictures.glyphTable) {
        drawUnseen(texture, saturation);
    }
}

} // namespace

void drawUnseen(const Texture2D& texture) { drawUnseen(texture, 1.0); }

void warmUpDriver() {
    drawAllUnseen(1.0);
    if (hasPlainProgram()) {
        drawAllUnseen(0.5); // by the other program
    }
}

} // namespace dunkman
