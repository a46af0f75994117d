#pragma once

#include <cstdint>
#include <memory>

#include "render/material.h"
#include "render/mesh.h"
#include "render/program.h"
#include "render/sampler.h"
#include "render/view.h"

namespace dunkman {

// Where the basic program keeps what every sprite sets; -1 for what the shader compiler removed.
struct SpriteUniforms {
    std::int32_t viewProjection;
    std::int32_t destMinAndSize;
    std::int32_t posCosSin;
    std::int32_t mirrorFlags;
    std::int32_t texture;
    std::int32_t zOffset;
    std::int32_t gammaGainSaturation;
    std::int32_t tint;
};

// The drawing objects that createRenderer makes and that every sprite is drawn with.
struct RendererObjects {
    RendererObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames);

    Program program;
    Material material;
    Mesh quad;
    Sampler sampler;
    SpriteUniforms uniforms;
    Matrix4 view{}; // what uViewProjection was last set to
};

extern std::unique_ptr<RendererObjects> rendererObjects; // null: no renderer

} // namespace dunkman
