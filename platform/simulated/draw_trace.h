#pragma once

#include <array>
#include <cstdint>
#include <string>

// The lines of a draw trace.
namespace dunkman::simulated {

// The value of a uniform as the simulated OpenGL keeps it.
struct UniformStore {
    std::array<float, 16> floats;
    std::uint32_t number;
};

// The uniforms of a program that a trace prints; null where the program lacks one, which prints as zeros.
struct TraceUniforms {
    const UniformStore* viewProjection = nullptr;
    const UniformStore* destMinAndSize = nullptr;
    const UniformStore* posCosSin = nullptr;
    const UniformStore* mirrorFlags = nullptr;
    const UniformStore* zOffset = nullptr;
    const UniformStore* gammaGainSaturation = nullptr;
    const UniformStore* tint = nullptr;
};

// "view " and the matrix, column after column.
std::string viewLine(const TraceUniforms& uniforms);

// "draw ", the image key or glyph that the texture is, and the values of the sprite's uniforms.
std::string drawLine(const TraceUniforms& uniforms, std::uint32_t textureName);

// Texture names are about to be used anew, for other images.
void forgetTextureKeys();

} // namespace dunkman::simulated
