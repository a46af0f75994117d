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

} // namespace dunkman
