#include "render/picture.h"

#include "render/image_table.h"

namespace dunkman {

void drawPicture(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                 int /*reserved*/, SpriteMode mode) {
    const Texture2D& texture = imageByKey(imageKey);
    Vec2 pivot = {0.5, 0.5};
    drawSprite(texture, false, true, mode, 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, position, {aspectOf(texture), 1.0},
               pivot, {height, height}, angle, zOffset);
}

} // namespace dunkman
