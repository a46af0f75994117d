#include <array>
#include <filesystem>
#include <string>

#include "base/fatal.h"
#include "render/dds.h"
#include "render/shader_preprocessor.h"
#include "tools/inspect/faults.h"
#include "world/object_class.h"

namespace dunkman::inspect {

namespace {

constexpr std::uint32_t fourCcDxt1 = 0x31545844; // "DXT1"

// Keys that the screens look up.
constexpr std::array<std::string_view, 12> screenImages = {
    "sunset",        "menuBackground", "logo",     "logoTheGame", "pineappleHeart", "cocktailFull",
    "cocktailSpill", "palmTree",       "btnArrow", "btnZ",        "btnX",           "btnEsc"};

constexpr std::array<std::string_view, 8> requiredUniforms = {
    "mat4 uViewProjection", "vec4 uDestMinAndSize", "vec4 uPosCosSin",           "uint uMirrorFlags",
    "sampler2D uTexture",   "float zOffset",        "vec3 uGammaGainSaturation", "vec3 uTint"};

void requireImage(const JsonValue& images, std::string_view key, Faults& faults) {
    if (!images.contains(key)) {
        faults.add("images_compressed.json5",
                   "The image \"" + std::string(key) + "\", which the game needs, is missing.");
    }
}

void checkDds(const std::string& path, Faults& faults) {
    try {
        const DdsHeader header = readDds(path).header;
        if (header.fourCc != fourCcDxt1) {
            faults.add(path, "The texture is not marked as DXT1, yet the game reads it as that.");
        }
        if (ddsStorageLevels(header) < header.mipMapCount) {
            faults.add(path, "The file counts more levels than a texture of its size has.");
        }
    } catch (const FatalError& error) {
        faults.add(path, error.what());
    }
}

std::string expand(const std::string& path, Faults& faults) {
    if (!std::filesystem::is_regular_file(path)) {
        faults.add(path, "The file is missing.");
        return {};
    }
    try {
        return preprocessShaderFile(path);
    } catch (const FatalError& error) {
        faults.add(path, error.what());
        return {};
    }
}

} // namespace

void checkImages(const JsonValue& images, Faults& faults) {
    for (const JsonMember& image : images.objectValue()) {
        if (image.value.kind != JsonKind::String) {
            faults.add("images_compressed.json5",
                       "The image " + quoted(image.key()) + " is no string with a path.");
        } else {
            checkDds(std::string(image.value.stringValue()), faults);
        }
    }
    for (const std::string_view key : screenImages) {
        requireImage(images, key, faults);
    }
    for (std::size_t type = 0; type < objectTypeCount; ++type) {
        for (const std::string_view key : classOf(static_cast<ObjectType>(type)).images) {
            requireImage(images, key, faults);
        }
    }
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        checkDds(std::string("AssetsCompressed/Font/") + letter + ".dds", faults);
    }
}

void checkShaders(Faults& faults) {
    const std::string sources = expand("drawable_basic.vert", faults) + expand("drawable_basic.frag", faults);
    for (const std::string_view uniform : requiredUniforms) {
        if (sources.find("uniform " + std::string(uniform) + ';') == std::string::npos) {
            faults.add("drawable_basic.vert",
                       "No shader declares \"uniform " + std::string(uniform) + ";\".");
        }
    }
}

void checkMusic(Faults& faults) {
    for (const char* path : {"zombiegame.mp3", "intro.mp3"}) {
        if (!std::filesystem::is_regular_file(path)) {
            faults.add(path, "The music is missing; the game stays silent without it.");
        }
    }
}

} // namespace dunkman::inspect
