#pragma once

#include "workshop/art/texture/picture.h"

namespace dunkman {

/// A drawing as the game has them: a figure of flat, two-toned shapes with a dark outline and antialiased
/// edges, cut out of nothing. Sides of at least 32 texels; always the same for the same size.
Picture makeCartoon(int width, int height);

/// An opaque sky: two soft gradients and a sun.
Picture makeSky(int width, int height);

/// A picture of one colour.
Picture makeFlat(int width, int height, Rgba colour);

} // namespace dunkman
