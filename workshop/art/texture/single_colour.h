#pragma once

#include "workshop/art/texture/block_fit.h"

namespace dunkman {

/// The best line whose colour one part along it stands for a single colour: exact when the colour lies on the
/// 5-6-5 grid, otherwise two neighbouring ends are mixed to come nearer than the grid itself could.
BlockFit fitSingleColour(const BlockColours& colours, int parts);

} // namespace dunkman
