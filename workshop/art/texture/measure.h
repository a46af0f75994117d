#pragma once

#include "workshop/art/texture/picture.h"

#include <cstddef>
#include <cstdint>

namespace dunkman {

/// How far two pictures of the same size are apart. Colours are compared where both are opaque.
struct PictureDifference {
    std::size_t texels = 0;
    std::size_t bothOpaque = 0;
    /// Texels cut away in one picture and kept in the other.
    std::size_t cutDiffers = 0;
    std::uint64_t squaredSum = 0;
    std::uint64_t absoluteSum = 0;
    int largest = 0;

    /// Peak signal to noise ratio over red, green and blue in dB; 99 when nothing differs.
    double psnr() const;
    /// Mean absolute difference of a channel, 0 to 255.
    double mean() const;
    double cutShare() const;

    void add(const PictureDifference& other);
};

/// Throws std::invalid_argument when the sizes differ.
PictureDifference compare(const Picture& one, const Picture& other);

} // namespace dunkman
