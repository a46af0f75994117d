#include "platform/simulated/draw_trace.h"

#include <map>

#include "json5/canonical.h"
#include "render/image_table.h"

namespace dunkman::simulated {
namespace {

std::map<std::uint32_t, std::string> textureKeys;

void collectTextureKeys() {
    for (const auto& [key, texture] : pictures.imageTable) {
        // Two keys of one texture: the table's order is no order to print, so the lower key it is.
        std::string& known = textureKeys[texture.name];
        if (known.empty() || key < known) {
            known = key;
        }
    }
    for (std::size_t letter = 0; letter < glyphCount; ++letter) {
        textureKeys[pictures.glyphTable[letter].name] =
            std::string("glyph:") + static_cast<char>('A' + letter);
    }
    textureKeys[0] = "none";
}

const std::string& textureKey(std::uint32_t textureName) {
    if (!textureKeys.contains(textureName)) {
        textureKeys.clear();
        collectTextureKeys();
    }
    std::string& key = textureKeys[textureName];
    if (key.empty()) {
        key = "none";
    }
    return key;
}

void appendFloats(std::string& line, const UniformStore* store, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        if (index != 0) {
            line += ',';
        }
        appendHexFloat(line, store == nullptr ? 0.0 : static_cast<double>(store->floats[index]));
    }
}

} // namespace

std::string viewLine(const TraceUniforms& uniforms) {
    std::string line = "view ";
    appendFloats(line, uniforms.viewProjection, 16);
    return line;
}

std::string drawLine(const TraceUniforms& uniforms, std::uint32_t textureName) {
    std::string line = "draw image=" + textureKey(textureName) + " flags=";
    line += std::to_string(uniforms.mirrorFlags == nullptr ? 0u : uniforms.mirrorFlags->number);
    line += " dest=";
    appendFloats(line, uniforms.destMinAndSize, 4);
    line += " pos=";
    appendFloats(line, uniforms.posCosSin, 4);
    line += " z=";
    appendFloats(line, uniforms.zOffset, 1);
    line += " ggs=";
    appendFloats(line, uniforms.gammaGainSaturation, 3);
    line += " tint=";
    appendFloats(line, uniforms.tint, 3);
    return line;
}

void forgetTextureKeys() { textureKeys.clear(); }

} // namespace dunkman::simulated
