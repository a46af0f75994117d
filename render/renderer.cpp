#include "render/renderer.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <string>

#include "render/binding_state_writer.h"
#include "render/gl.h"
#include "render/image_table_writer.h"
#include "render/renderer_objects.h"
#include "render/shader_preprocessor.h"

namespace dunkman {
namespace {

constexpr const char* vertexFile = "drawable_basic.vert";
constexpr const char* fragmentFile = "drawable_basic.frag";

SpriteUniforms findSpriteUniforms(const Program& program) {
    const auto find = [&program](const char* uniform) { return program.findResource(uniform).value_or(-1); };
    return {
        find("uViewProjection"), find("uDestMinAndSize"), find("uPosCosSin"),           find("uMirrorFlags"),
        find("uTexture"),        find("zOffset"),         find("uGammaGainSaturation"), find("uTint")};
}

ShaderSourceSet readSources() {
    ShaderSourceSet sources;
    sources.vertex = preprocessShaderFile(vertexFile);
    sources.fragment = preprocessShaderFile(fragmentFile);
    return sources;
}

ShaderSourceSet namesOfFiles() {
    ShaderSourceSet names;
    names.vertex = vertexFile;
    names.fragment = fragmentFile;
    return names;
}

// Nothing but the version may stand before a definition. The driver goes on counting the file's own lines.
std::string withPlainSprites(const std::string& source) {
    const std::size_t version = source.find("#version");
    const std::size_t lineEnd = version == std::string::npos ? version : source.find('\n', version);
    const std::size_t place = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    const auto line =
        1 + std::count(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    return source.substr(0, place) + "#define " + plainSpritesDefinition + "\n#line " + std::to_string(line) +
           '\n' + source.substr(place);
}

} // namespace

std::unique_ptr<RendererObjects> rendererObjects;

SpriteProgram::SpriteProgram(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames)
    : program(sources, fileNames), material(program), uniforms(findSpriteUniforms(program)) {}

SoftwareObjects::SoftwareObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames)
    : plain(sources, fileNames), magnifier(makeMagnifyingSampler()) {}

RendererObjects::RendererObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames)
    : basic(sources, fileNames), quad(makeQuadMesh()), sampler(makeSpriteSampler()) {}

void createRenderer() { rendererObjects = std::make_unique<RendererObjects>(readSources(), namesOfFiles()); }

void prepareForSoftware() {
    assert(rendererObjects != nullptr);
    ShaderSourceSet sources = readSources();
    sources.fragment = withPlainSprites(sources.fragment);
    rendererObjects->software.emplace(sources, namesOfFiles());
}

bool isPreparedForSoftware() { return rendererObjects != nullptr && rendererObjects->software.has_value(); }

void releaseRenderer() {
    if (rendererObjects == nullptr) {
        return;
    }
    rendererObjects->basic.program.release();
    if (rendererObjects->software) {
        rendererObjects->software->plain.program.release();
    }
    rendererObjects->quad.release();
    rendererObjects->sampler.release();
    if (rendererObjects->software) {
        rendererObjects->software->magnifier.release();
    }
    rendererObjects.reset();
    writable::bindingState = {};
}

void resetRenderer() {
    rendererObjects.reset();
    writable::bindingState = {};
    writable::pictures = {};
    resetGlFunctions();
}

} // namespace dunkman
