#include "render/sampler.h"

#include "render/gl.h"

namespace dunkman {

void Sampler::release() {
    glDeleteSamplers(1, &name);
    name = 0;
}

namespace {

Sampler makeSampler(std::uint32_t minFilter) {
    Sampler sampler;
    sampler.wrapS = sampler.wrapT = sampler.wrapR = GL_CLAMP_TO_EDGE;
    sampler.minFilter = minFilter;
    sampler.magFilter = GL_LINEAR;
    glCreateSamplers(1, &sampler.name);
    const auto set = [&sampler](GLenum parameter, std::uint32_t value) {
        glSamplerParameteri(sampler.name, parameter, static_cast<GLint>(value));
    };
    set(GL_TEXTURE_WRAP_S, sampler.wrapS);
    set(GL_TEXTURE_WRAP_T, sampler.wrapT);
    set(GL_TEXTURE_WRAP_R, sampler.wrapR);
    set(GL_TEXTURE_MIN_FILTER, sampler.minFilter);
    set(GL_TEXTURE_MAG_FILTER, sampler.magFilter);
    return sampler;
}

} // namespace

Sampler makeSpriteSampler() { return makeSampler(GL_LINEAR_MIPMAP_LINEAR); }

Sampler makeMagnifyingSampler() { return makeSampler(GL_LINEAR); }

} // namespace dunkman
