#pragma once

#include <cstdint>

#include "render/handle.h"

namespace dunkman {

// How texels are read between and beyond their centres.
class Sampler final : public HandleBase {
public:
    std::uint32_t wrapS = 0;
    std::uint32_t wrapT = 0;
    std::uint32_t wrapR = 0;
    std::uint32_t minFilter = 0;
    std::uint32_t magFilter = 0;

    void release() override;
};

// The one sampler of the game: clamped at the edges, trilinear.
Sampler makeSpriteSampler();

// The same but for the smaller levels of textures: it samples the full size only. That is what the other one does wherever
// pixels are no farther apart than texels, and costs software half as much.
Sampler makeMagnifyingSampler();

} // namespace dunkman
