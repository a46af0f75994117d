#include "render/picture.h"

#include "render/image_table.h"

namespace dunkman {

Sprite pictureSprite(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                     SpriteMode mode) {
    const Texture2D& texture = imageByKey(imageKey);
    return {.texture = texture,
            .mirrorY = true,
            .mode = mode,
            .position = position,
            .size = {aspectOf(texture), 1.0},
            .scale = {height, height},
            .angle = angle,
            .zOffset = zOffset};
}

void drawPicture(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                 int /*reserved*/, SpriteMode mode) {
    draw(pictureSprite(imageKey, position, height, angle, zOffset, mode));
}

} // namespace dunkman
