#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "render/material.h"
#include "render/mesh.h"
#include "render/program.h"
#include "render/sampler.h"
#include "render/view.h"

namespace dunkman {

// Where a sprite program keeps what every sprite sets; -1 for what the shader compiler removed.
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

// A program that draws sprites, with its values. Stays where it is: the material refers to the program.
struct SpriteProgram {
    SpriteProgram(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames);
    SpriteProgram(const SpriteProgram&) = delete;
    SpriteProgram& operator=(const SpriteProgram&) = delete;

    Program program;
    Material material;
    SpriteUniforms uniforms;
};

// The drawing objects that createRenderer makes and that every sprite is drawn with.
struct RendererObjects {
    RendererObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames);

    SpriteProgram basic;
    std::optional<SpriteProgram>
        plain; // draws what has nothing to adjust; where it is not, basic draws that too
    Mesh quad;
    Sampler sampler;
    Matrix4 view{}; // what uViewProjection was last set to
};

extern std::unique_ptr<RendererObjects> rendererObjects; // null: no renderer

} // namespace dunkman
