#include "render/warm_up.h"

#include <utility>

#include "render/image_table.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/sprite.h"

namespace dunkman {

namespace {

void drawUnseen(const Texture2D& texture, double saturation) {
    const Sprite unseen = {.texture = texture,
                           .mode = SpriteMode::Interface,
                           .saturation = saturation,
                           .size = {0.0, 0.0},
                           .pivot = {0.0, 0.0}};
    draw(unseen);
    if (isPreparedForSoftware()) { // by the other sampler, too
        RendererObjects& objects = *rendererObjects;
        std::swap(objects.sampler, objects.software->magnifier);
        draw(unseen);
        std::swap(objects.sampler, objects.software->magnifier);
    }
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
    if (isPreparedForSoftware()) {
        drawAllUnseen(0.5); // by the other program
    }
}

} // namespace dunkman
