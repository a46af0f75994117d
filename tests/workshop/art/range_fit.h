#pragma once

#include "workshop/art/texture/dxt1_encoder.h"

namespace dunkman {

/// The plain encoder that ours must beat: the ends are the darkest and the lightest texel, every other texel
/// takes the nearest of the colours between them.
Dxt1Block encodeByRange(const BlockTexels& block);

/// A picture put through it block by block. Sides are multiples of four.
Picture throughRangeFit(const Picture& picture);

} // namespace dunkman
