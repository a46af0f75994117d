#pragma once

#include "render/sprite.h"
#include "render/view.h"

namespace dunkman {

// Draws what lies behind everything else, first of all in a frame. Without depth writes: whatever is drawn later lies over
// it. Most backdrops look the same in every frame; where OpenGL is done in software a copy of the last one is kept and
// brought back, at a tenth of the price.
void drawBackdrop(const Sprite& sprite);

// The backdrop that the platform keeps a copy of, with the view that it was drawn in.
struct KeptBackdrop {
    Sprite sprite; // without a texture: there is none
    Matrix4 view{};

    friend bool operator==(const KeptBackdrop&, const KeptBackdrop&) = default;
};

// Keeps none from now on. For programs that run several games.
void resetBackdrop();

} // namespace dunkman
