#include "render/renderer.h"

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

} // namespace

std::unique_ptr<RendererObjects> rendererObjects;

RendererObjects::RendererObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames)
    : program(sources, fileNames), material(program), quad(makeQuadMesh()), sampler(makeSpriteSampler()),
      uniforms(findSpriteUniforms(program)) {}

void createRenderer() {
    ShaderSourceSet sources;
    sources.vertex = preprocessShaderFile(vertexFile);
    sources.fragment = preprocessShaderFile(fragmentFile);
    ShaderSourceSet fileNames;
    fileNames.vertex = vertexFile;
    fileNames.fragment = fragmentFile;
    rendererObjects = std::make_unique<RendererObjects>(sources, fileNames);
}

void releaseRenderer() {
    if (rendererObjects == nullptr) {
        return;
    }
    rendererObjects->program.release();
    rendererObjects->quad.release();
    rendererObjects->sampler.release();
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
