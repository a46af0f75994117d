#include "tests/world/drawn_sprites.h"

namespace dunkman {

std::vector<DrawnSprite> drawnSprites;

void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset) {
    drawnSprites.push_back({texture, mirrorX, mirrorY, mode, gamma, gain, saturation, tintR, tintG, tintB,
                            position, size, pivot, scale, angle, zOffset});
    if (mirrorX) {
        pivot.x = 1.0 - pivot.x; // as the sprite drawer does: whoever passed its own field would see it flip
    }
}

} // namespace dunkman
