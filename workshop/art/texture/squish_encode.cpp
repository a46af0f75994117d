// Writes level 0 of a picture with libsquish's iterated cluster fit, the best packaged encoder that we know
// of, so that compare-encoders can set ours against it.

#include "tools/console/about.h"
#include "workshop/art/texture/dds_file.h"
#include "workshop/art/texture/dxt1_picture.h"
#include "workshop/art/texture/png_file.h"

#include <squish.h>

#include <cstdio>
#include <exception>

int main(int count, char** values) {
    constexpr const char* usage = "squish-encode PICTURE.png TEXTURE.dds\n"
                                  "squish-encode --help | --version\n";
    if (dunkman::console::tellAbout(count, values, "squish-encode", usage)) {
        return 0;
    }
    if (count != 3) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        const dunkman::Picture picture = dunkman::readPng(values[1]);
        std::vector<std::uint8_t> blocks(dunkman::dxt1Bytes(picture.width, picture.height));
        // All channels count alike, as in our own measure.
        float weights[3] = {1.0F, 1.0F, 1.0F};
        squish::CompressImage(reinterpret_cast<const squish::u8*>(picture.texels.data()), picture.width,
                              picture.height, blocks.data(),
                              squish::kDxt1 | squish::kColourIterativeClusterFit, weights);
        dunkman::writeDdsTexture(values[2], {picture.width, picture.height, {blocks}});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "squish-encode: %s\n", error.what());
        return 1;
    }
}
