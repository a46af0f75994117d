#pragma once

#include "render/texture.h"

// Drivers leave work to the first draw that needs it: code for a kind of texture, moving a texture to the
// graphics card. Done at start-up it cannot hold up a frame later and with it the music, which is mixed only
// 100 ms ahead. Needs the renderer.
namespace dunkman {

// Draws at size zero, so that nothing of it can be seen.
void drawUnseen(const Texture2D& texture);

// Draws every image and every glyph unseen, by every sprite program and sampler.
void warmUpDriver();

} // namespace dunkman
