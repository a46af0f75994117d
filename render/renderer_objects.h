#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

#include "render/material.h"
#include "render/mesh.h"
#include "render/nearest_first.h"
#include "render/program.h"
#include "render/sampler.h"
#include "render/texture_coverage.h"
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

// What spares pixels and their colouring where OpenGL is done in software.
struct SoftwareObjects {
    SoftwareObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames);

    SpriteProgram plain; // draws what has nothing to adjust
    Sampler magnifier;   // samples what is shown no smaller than it is
    SpriteQueue queue;
    std::unordered_map<std::uint32_t, CoverageByLevel>
        coverage;            // of the textures that are loaded, by their names
    bool isClearDue = false; // whether a frame has begun in which nothing has been drawn yet
};

// The drawing objects that createRenderer makes and that every sprite is drawn with.
struct RendererObjects {
    RendererObjects(const ShaderSourceSet& sources, const ShaderSourceSet& fileNames);

    SpriteProgram basic;
    Mesh quad;
    Sampler sampler;
    std::optional<SoftwareObjects> software; // what prepareForSoftware makes
    Matrix4 view{};                          // what uViewProjection was last set to
};

extern std::unique_ptr<RendererObjects> rendererObjects; // null: no renderer

} // namespace dunkman
