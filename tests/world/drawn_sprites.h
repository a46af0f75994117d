#pragma once

#include <vector>

#include "render/sprite.h"

namespace dunkman {

// One drawn sprite. The world tests bring their own draw(sprite), which keeps them here, with the texture as it was.
struct DrawnSprite {
    Texture2D texture;
    bool mirrorX;
    bool mirrorY;
    SpriteMode mode;
    double gamma, gain, saturation;
    double tintR, tintG, tintB;
    Vec2 position, size, pivot, scale;
    double angle;
    double zOffset;
};

extern std::vector<DrawnSprite> drawnSprites;

} // namespace dunkman
