#include "workshop/art/texture/shown_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace dunkman {

namespace {

/// Sums in the range 0 to 255, colour multiplied by alpha: cut texels are black, so plain sums are just that.
struct Sample {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 0.0;
};

void add(Sample& sum, const Rgba& texel, double weight) {
    sum.red += weight * texel.red;
    sum.green += weight * texel.green;
    sum.blue += weight * texel.blue;
    sum.alpha += weight * texel.alpha;
}

void addBilinear(Sample& sum, const Picture& level, double u, double v, double weight) {
    const double x = u * level.width - 0.5;
    const double y = v * level.height - 0.5;
    const int left = static_cast<int>(std::floor(x));
    const int top = static_cast<int>(std::floor(y));
    const double rightShare = x - left;
    const double lowerShare = y - top;
    const int x0 = std::clamp(left, 0, level.width - 1);
    const int x1 = std::clamp(left + 1, 0, level.width - 1);
    const int y0 = std::clamp(top, 0, level.height - 1);
    const int y1 = std::clamp(top + 1, 0, level.height - 1);
    add(sum, level.at(x0, y0), weight * (1.0 - rightShare) * (1.0 - lowerShare));
    add(sum, level.at(x1, y0), weight * rightShare * (1.0 - lowerShare));
    add(sum, level.at(x0, y1), weight * (1.0 - rightShare) * lowerShare);
    add(sum, level.at(x1, y1), weight * rightShare * lowerShare);
}

std::uint8_t toByte(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::floor(value + 0.5), 0.0, 255.0));
}

Rgba shade(const Sample& sample) {
    const double alpha = sample.alpha / 255.0;
    if (alpha < 0.5) {
        return {};
    }
    return {toByte(sample.red / alpha), toByte(sample.green / alpha), toByte(sample.blue / alpha), 255};
}

} // namespace

Picture showTexture(const DdsTexture& texture, int width, int height) {
    const double texelsPerPixel =
        std::max(static_cast<double>(texture.width) / width, static_cast<double>(texture.height) / height);
    const double lastLevel = static_cast<double>(texture.levels.size()) - 1.0;
    const double detail = std::clamp(std::log2(texelsPerPixel), 0.0, lastLevel);
    const int nearLevel = static_cast<int>(std::floor(detail));
    const int farLevel = std::min(nearLevel + 1, static_cast<int>(lastLevel));
    const double farShare = detail - nearLevel;
    const Picture near = decodeLevel(texture, nearLevel);
    const Picture far = decodeLevel(texture, farLevel);

    Picture shown(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double u = (x + 0.5) / width;
            const double v = (y + 0.5) / height;
            Sample sample;
            addBilinear(sample, near, u, v, 1.0 - farShare);
            addBilinear(sample, far, u, v, farShare);
            shown.at(x, y) = shade(sample);
        }
    }
    return shown;
}

} // namespace dunkman
