#include "tests/world/drawn_sprites.h"

namespace dunkman {

std::vector<DrawnSprite> drawnSprites;

void draw(const Sprite& sprite) {
    drawnSprites.push_back({sprite.texture, sprite.mirrorX, sprite.mirrorY, sprite.mode, sprite.gamma,
                            sprite.gain, sprite.saturation, sprite.tintR, sprite.tintG, sprite.tintB,
                            sprite.position, sprite.size, sprite.pivot, sprite.scale, sprite.angle,
                            sprite.zOffset});
}

} // namespace dunkman
