#pragma once

#include <optional>

#include "render/footprint.h"
#include "render/texture.h"

namespace dunkman {

// Most pictures have wide transparent borders, which cost as much to draw as what they show: without a graphics card a
// quarter of a frame.

// The pixels outside of which a sprite leaves nothing, if a good deal of its quad lies outside of them; none where it
// would not pay to leave them out. The sprite is given by its texture and its placement.
std::optional<PixelRect> visiblePart(const Texture2D& texture, bool mirrorX, bool mirrorY,
                                     const Placement& placement, const Matrix4& view);

} // namespace dunkman
