#include "workshop/art/texture/texture_build.h"

#include "workshop/art/texture/dxt1_picture.h"

namespace dunkman {

DdsTexture buildTexture(const Picture& picture, Tiling tiling) {
    DdsTexture texture{picture.width, picture.height, {}};
    for (const Picture& level : makeMipChain(picture, tiling)) {
        texture.levels.push_back(encodePicture(level));
    }
    return texture;
}

} // namespace dunkman
