#pragma once

#include <string_view>

#include "base/geometry.h"
#include "render/sprite.h"

namespace dunkman {

// An image of the image table, `height` units tall in its own proportions, centred on `position`.
Sprite pictureSprite(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                     SpriteMode mode);

// Draws one.
void drawPicture(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                 int reserved, SpriteMode mode);

} // namespace dunkman
