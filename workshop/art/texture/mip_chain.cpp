#include "workshop/art/texture/mip_chain.h"

#include "workshop/art/texture/resample.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace dunkman {

namespace {

std::ptrdiff_t coveredTexels(const Picture& picture) {
    return std::count_if(picture.texels.begin(), picture.texels.end(),
                         [](const Rgba& texel) { return texel.alpha >= alphaCut; });
}

/// The alpha from which on a texel is kept, so that as many are kept as wanted. Texels of equal alpha stand
/// or fall together (a symmetric drawing stays so): whichever choice comes nearer to the wanted number.
float cutFor(const SoftPicture& soft, std::ptrdiff_t wanted) {
    std::vector<float> alphas;
    alphas.reserve(soft.texels.size());
    for (const SoftTexel& texel : soft.texels) {
        alphas.push_back(texel.alpha);
    }
    std::sort(alphas.begin(), alphas.end(), [](float one, float other) { return one > other; });
    const float edge = alphas[static_cast<std::size_t>(wanted) - 1];
    const auto first = std::find(alphas.begin(), alphas.end(), edge);
    const auto behind = std::find_if(first, alphas.end(), [edge](float alpha) { return alpha < edge; });
    const std::ptrdiff_t without = first - alphas.begin();
    const std::ptrdiff_t with = behind - alphas.begin();
    const bool leaveOut = without > 0 && wanted - without < with - wanted;
    return leaveOut ? *(first - 1) : edge;
}

std::uint8_t toByte(float value) {
    return static_cast<std::uint8_t>(std::clamp(std::floor(value + 0.5F), 0.0F, 255.0F));
}

/// Gives kept texels their own colour back (the sum holds it multiplied by alpha) and clears the others.
Picture cutOut(const SoftPicture& soft, float cut) {
    Picture picture(soft.width, soft.height);
    for (std::size_t index = 0; index < soft.texels.size(); ++index) {
        const SoftTexel& texel = soft.texels[index];
        if (texel.alpha < cut || texel.alpha <= 0.0F) {
            continue;
        }
        picture.texels[index] = {toByte(texel.red / texel.alpha), toByte(texel.green / texel.alpha),
                                 toByte(texel.blue / texel.alpha), 255};
    }
    return picture;
}

Picture cutOutLevelZero(const Picture& picture) {
    Picture result(picture.width, picture.height);
    for (std::size_t index = 0; index < picture.texels.size(); ++index) {
        const Rgba& texel = picture.texels[index];
        if (texel.alpha >= alphaCut) {
            result.texels[index] = {texel.red, texel.green, texel.blue, 255};
        }
    }
    return result;
}

Picture makeLevel(const Picture& picture, int width, int height, Tiling tiling) {
    const SoftPicture soft = shrink(picture, width, height, tiling);
    const auto all = static_cast<std::ptrdiff_t>(soft.texels.size());
    const std::ptrdiff_t covered = coveredTexels(picture);
    if (covered == 0) {
        return Picture(width, height);
    }
    const double share = static_cast<double>(covered) / static_cast<double>(picture.texels.size());
    const auto wanted = static_cast<std::ptrdiff_t>(std::floor(share * static_cast<double>(all) + 0.5));
    return cutOut(soft, cutFor(soft, std::clamp<std::ptrdiff_t>(wanted, 1, all)));
}

} // namespace

int mipLevelCount(int width, int height) {
    int count = 1;
    for (int side = std::max(width, height); side > 1; side /= 2) {
        ++count;
    }
    return count;
}

std::vector<Picture> makeMipChain(const Picture& picture, Tiling tiling) {
    std::vector<Picture> levels = {cutOutLevelZero(picture)};
    const int count = mipLevelCount(picture.width, picture.height);
    for (int level = 1; level < count; ++level) {
        levels.push_back(makeLevel(picture, std::max(1, picture.width >> level),
                                   std::max(1, picture.height >> level), tiling));
    }
    return levels;
}

double coverage(const Picture& picture) {
    return static_cast<double>(coveredTexels(picture)) / static_cast<double>(picture.texels.size());
}

} // namespace dunkman
