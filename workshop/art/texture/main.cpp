#include "tools/console/about.h"
#include "workshop/art/texture/ico_file.h"
#include "workshop/art/texture/measure.h"
#include "workshop/art/texture/png_file.h"
#include "workshop/art/texture/shown_picture.h"
#include "workshop/art/texture/texture_build.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace dunkman;

using Arguments = std::vector<std::string>;

constexpr const char* usage =
    "dunkman-texture encode [--tile x|y|xy] [--opaque] PICTURE.png TEXTURE.dds\n"
    "dunkman-texture decode TEXTURE.dds LEVEL PICTURE.png\n"
    "dunkman-texture show TEXTURE.dds WIDTH HEIGHT PICTURE.png    as the game shows it at that size\n"
    "dunkman-texture measure PICTURE.png TEXTURE.dds              PSNR of level 0 and cut errors\n"
    "dunkman-texture coverage TEXTURE.dds                         kept share of each level\n"
    "dunkman-texture compare ONE.dds OTHER.dds                    mean, largest difference, cut errors\n"
    "dunkman-texture icon ICON.ico PICTURE.png...                 an icon of all these sizes\n"
    "dunkman-texture --help | --version\n";

struct BadUsage {};

/// Takes `name` out of the arguments and says whether it was there.
bool takeFlag(Arguments& arguments, const std::string& name) {
    const auto place = std::find(arguments.begin(), arguments.end(), name);
    if (place == arguments.end()) {
        return false;
    }
    arguments.erase(place);
    return true;
}

Tiling takeTiling(Arguments& arguments) {
    const auto place = std::find(arguments.begin(), arguments.end(), "--tile");
    if (place == arguments.end()) {
        return {};
    }
    if (place + 1 == arguments.end()) {
        throw BadUsage();
    }
    const std::string axes = *(place + 1);
    if (axes != "x" && axes != "y" && axes != "xy") {
        throw BadUsage();
    }
    arguments.erase(place, place + 2);
    return {axes != "y", axes != "x"};
}

void requireCount(const Arguments& arguments, std::size_t count) {
    if (arguments.size() != count) {
        throw BadUsage();
    }
}

/// An opaque picture may have a soft outermost texel where the drawing ends within it, but no hole.
void makeOpaque(Picture& picture, const std::string& path) {
    for (Rgba& texel : picture.texels) {
        if (texel.alpha < alphaCut) {
            throw std::runtime_error(path + ": has transparent texels, but is marked as opaque");
        }
        texel.alpha = 255;
    }
}

int encode(Arguments arguments) {
    const Tiling tiling = takeTiling(arguments);
    const bool opaque = takeFlag(arguments, "--opaque");
    requireCount(arguments, 2);
    Picture picture = readPng(arguments[0]);
    if (opaque) {
        makeOpaque(picture, arguments[0]);
    }
    writeDdsTexture(arguments[1], buildTexture(picture, tiling));
    return 0;
}

int decode(const Arguments& arguments) {
    requireCount(arguments, 3);
    writePng(arguments[2], decodeLevel(readDdsTexture(arguments[0]), std::stoi(arguments[1])));
    return 0;
}

int show(const Arguments& arguments) {
    requireCount(arguments, 4);
    const int width = std::stoi(arguments[1]);
    const int height = std::stoi(arguments[2]);
    if (width < 1 || height < 1) {
        throw BadUsage();
    }
    writePng(arguments[3], showTexture(readDdsTexture(arguments[0]), width, height));
    return 0;
}

int measure(const Arguments& arguments) {
    requireCount(arguments, 2);
    const PictureDifference difference =
        compare(readPng(arguments[0]), decodeLevel(readDdsTexture(arguments[1]), 0));
    std::printf("%.3f %zu %zu %llu\n", difference.psnr(), difference.cutDiffers, difference.bothOpaque,
                static_cast<unsigned long long>(difference.squaredSum));
    return 0;
}

int coverages(const Arguments& arguments) {
    requireCount(arguments, 1);
    const DdsTexture texture = readDdsTexture(arguments[0]);
    for (int level = 0; level < static_cast<int>(texture.levels.size()); ++level) {
        std::printf("%.4f ", coverage(decodeLevel(texture, level)));
    }
    std::printf("\n");
    return 0;
}

int compareTextures(const Arguments& arguments) {
    requireCount(arguments, 2);
    const DdsTexture one = readDdsTexture(arguments[0]);
    const DdsTexture other = readDdsTexture(arguments[1]);
    if (one.width != other.width || one.height != other.height || one.levels.size() != other.levels.size()) {
        throw std::runtime_error(arguments[1] + ": another size or number of levels");
    }
    PictureDifference difference;
    for (int level = 0; level < static_cast<int>(one.levels.size()); ++level) {
        difference.add(compare(decodeLevel(one, level), decodeLevel(other, level)));
    }
    std::printf("%.4f %d %.6f\n", difference.mean(), difference.largest, difference.cutShare());
    return 0;
}

int icon(const Arguments& arguments) {
    if (arguments.size() < 2) {
        throw BadUsage();
    }
    writeIcon(arguments[0], {arguments.begin() + 1, arguments.end()});
    return 0;
}

int run(Arguments arguments) {
    if (arguments.empty()) {
        throw BadUsage();
    }
    const std::string command = arguments.front();
    arguments.erase(arguments.begin());
    if (command == "encode") {
        return encode(arguments);
    }
    if (command == "decode") {
        return decode(arguments);
    }
    if (command == "show") {
        return show(arguments);
    }
    if (command == "measure") {
        return measure(arguments);
    }
    if (command == "coverage") {
        return coverages(arguments);
    }
    if (command == "compare") {
        return compareTextures(arguments);
    }
    if (command == "icon") {
        return icon(arguments);
    }
    throw BadUsage();
}

} // namespace

int main(int count, char** values) {
    if (console::tellAbout(count, values, "dunkman-texture", usage)) {
        return 0;
    }
    try {
        return run(Arguments(values + 1, values + count));
    } catch (const BadUsage&) {
        std::fputs(usage, stderr);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dunkman-texture: %s\n", error.what());
        return 1;
    }
}
