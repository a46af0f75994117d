#include "workshop/art/texture/shown_picture.h"

#include "tests/workshop/art/cartoon.h"
#include "workshop/art/texture/texture_build.h"

#include <gtest/gtest.h>

namespace dunkman {

TEST(ShownPicture, LeavesATextureAtItsOwnSizeUnchangedWhereItIsOpaque) {
    const DdsTexture texture = buildTexture(makeSky(64, 32), {});
    EXPECT_EQ(showTexture(texture, 64, 32).texels, decodeLevel(texture, 0).texels);
}

TEST(ShownPicture, HasNoDarkFringeAtAnySize) {
    // A white disc on nothing: whatever is shown is white, however many cut texels were filtered in.
    Picture disc(96, 96);
    for (int y = 0; y < 96; ++y) {
        for (int x = 0; x < 96; ++x) {
            if ((x - 48) * (x - 48) + (y - 48) * (y - 48) < 40 * 40) {
                disc.at(x, y) = {255, 255, 255, 255};
            }
        }
    }
    const DdsTexture texture = buildTexture(disc, {});
    for (const int size : {160, 96, 70, 48, 31, 12}) {
        int shown = 0;
        for (const Rgba& texel : showTexture(texture, size, size).texels) {
            if (texel.alpha != 0) {
                ++shown;
                EXPECT_EQ(texel, (Rgba{255, 255, 255, 255})) << size;
            }
        }
        EXPECT_NEAR(static_cast<double>(shown) / (size * size), 3.14159 * 40 * 40 / (96 * 96), 0.03) << size;
    }
}

} // namespace dunkman
