#pragma once

#include "workshop/art/texture/block_fit.h"

#include <vector>

namespace dunkman {

/// Lines worth refining for a block of at least two colours, best first. The colours are put in order along
/// an axis; every way to cut that order into `parts + 1` runs is solved by least squares and rounded to the
/// grid. The axis starts as the principal one and then follows the best line found, until nothing gets
/// better. The errors of these fits are estimates; refineFit makes them exact.
std::vector<BlockFit> clusterFits(const BlockColours& colours, int parts, std::size_t wanted);

} // namespace dunkman
