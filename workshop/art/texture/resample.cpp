#include "workshop/art/texture/resample.h"

#include <cmath>
#include <cstddef>

namespace dunkman {

namespace {

/// Mitchell and Netravali's cubic with B = C = 1/3, zero from a distance of 2 on.
double mitchell(double distance) {
    const double x = std::fabs(distance);
    if (x < 1.0) {
        return (7.0 * x * x * x - 12.0 * x * x + 16.0 / 3.0) / 6.0;
    }
    if (x < 2.0) {
        return (-7.0 / 3.0 * x * x * x + 12.0 * x * x - 20.0 * x + 32.0 / 3.0) / 6.0;
    }
    return 0.0;
}

struct Tap {
    std::size_t source = 0;
    float weight = 0.0F;
};

/// For each texel of the smaller side, which texels of the larger one it is made of; weights add up to 1.
std::vector<std::vector<Tap>> makeTaps(int from, int to, bool wraps) {
    const double ratio = static_cast<double>(from) / to;
    std::vector<std::vector<Tap>> taps(static_cast<std::size_t>(to));
    for (int target = 0; target < to; ++target) {
        const double centre = (target + 0.5) * ratio;
        const int first = static_cast<int>(std::floor(centre - 2.0 * ratio));
        const int last = static_cast<int>(std::ceil(centre + 2.0 * ratio));
        std::vector<Tap>& list = taps[static_cast<std::size_t>(target)];
        double sum = 0.0;
        for (int source = first; source <= last; ++source) {
            const double weight = mitchell((source + 0.5 - centre) / ratio);
            if (weight == 0.0 || (!wraps && (source < 0 || source >= from))) {
                continue;
            }
            const int wrapped = ((source % from) + from) % from;
            list.push_back({static_cast<std::size_t>(wrapped), static_cast<float>(weight)});
            sum += weight;
        }
        for (Tap& tap : list) {
            tap.weight /= static_cast<float>(sum);
        }
    }
    return taps;
}

SoftTexel multiplied(const Rgba& texel) {
    const float alpha = static_cast<float>(texel.alpha) / 255.0F;
    return {texel.red * alpha, texel.green * alpha, texel.blue * alpha, alpha};
}

void accumulate(SoftTexel& sum, const SoftTexel& texel, float weight) {
    sum.red += texel.red * weight;
    sum.green += texel.green * weight;
    sum.blue += texel.blue * weight;
    sum.alpha += texel.alpha * weight;
}

} // namespace

SoftPicture shrink(const Picture& picture, int width, int height, Tiling tiling) {
    const auto columns = static_cast<std::size_t>(width);
    const auto sourceColumns = static_cast<std::size_t>(picture.width);
    const auto sourceRows = static_cast<std::size_t>(picture.height);
    const std::vector<std::vector<Tap>> across = makeTaps(picture.width, width, tiling.across);
    const std::vector<std::vector<Tap>> down = makeTaps(picture.height, height, tiling.down);

    std::vector<SoftTexel> narrowed(columns * sourceRows);
    std::vector<SoftTexel> line(sourceColumns);
    for (std::size_t y = 0; y < sourceRows; ++y) {
        for (std::size_t x = 0; x < sourceColumns; ++x) {
            line[x] = multiplied(picture.texels[y * sourceColumns + x]);
        }
        for (std::size_t x = 0; x < columns; ++x) {
            for (const Tap& tap : across[x]) {
                accumulate(narrowed[y * columns + x], line[tap.source], tap.weight);
            }
        }
    }

    SoftPicture result{width, height, std::vector<SoftTexel>(columns * static_cast<std::size_t>(height))};
    for (std::size_t y = 0; y < down.size(); ++y) {
        for (const Tap& tap : down[y]) {
            for (std::size_t x = 0; x < columns; ++x) {
                accumulate(result.texels[y * columns + x], narrowed[tap.source * columns + x], tap.weight);
            }
        }
    }
    return result;
}

} // namespace dunkman
