#include "workshop/art/texture/measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace dunkman {

double PictureDifference::psnr() const {
    if (squaredSum == 0) {
        return 99.0;
    }
    const double meanSquare = static_cast<double>(squaredSum) / (3.0 * static_cast<double>(bothOpaque));
    return 10.0 * std::log10(255.0 * 255.0 / meanSquare);
}

double PictureDifference::mean() const {
    return bothOpaque == 0 ? 0.0 : static_cast<double>(absoluteSum) / (3.0 * static_cast<double>(bothOpaque));
}

double PictureDifference::cutShare() const {
    return texels == 0 ? 0.0 : static_cast<double>(cutDiffers) / static_cast<double>(texels);
}

void PictureDifference::add(const PictureDifference& other) {
    texels += other.texels;
    bothOpaque += other.bothOpaque;
    cutDiffers += other.cutDiffers;
    squaredSum += other.squaredSum;
    absoluteSum += other.absoluteSum;
    largest = std::max(largest, other.largest);
}

PictureDifference compare(const Picture& one, const Picture& other) {
    if (one.width != other.width || one.height != other.height) {
        throw std::invalid_argument("the pictures differ in size");
    }
    PictureDifference result;
    result.texels = one.texels.size();
    for (std::size_t index = 0; index < one.texels.size(); ++index) {
        const Rgba& first = one.texels[index];
        const Rgba& second = other.texels[index];
        const bool firstKept = first.alpha >= alphaCut;
        const bool secondKept = second.alpha >= alphaCut;
        result.cutDiffers += firstKept != secondKept ? 1 : 0;
        if (!firstKept || !secondKept) {
            continue;
        }
        ++result.bothOpaque;
        const std::array<int, 3> differences = {std::abs(first.red - second.red),
                                                std::abs(first.green - second.green),
                                                std::abs(first.blue - second.blue)};
        for (const int difference : differences) {
            result.squaredSum += static_cast<std::uint64_t>(difference * difference);
            result.absoluteSum += static_cast<std::uint64_t>(difference);
            result.largest = std::max(result.largest, difference);
        }
    }
    return result;
}

} // namespace dunkman
