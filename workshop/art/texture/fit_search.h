#pragma once

#include "workshop/art/texture/block_fit.h"

namespace dunkman {

/// Improves a line until no small step helps: with every colour tied to its nearest place the best ends are
/// found for each channel alone, then the ends are moved by single steps with the colours free to change
/// place. The result's error is exact and never above that of `start`.
BlockFit refineFit(const BlockColours& colours, const BlockFit& start);

} // namespace dunkman
