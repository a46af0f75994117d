#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "render/texture.h"
#include "tests/fakes/recording_gl.h"

namespace dunkman {

// What one sprite sent to its shader.
struct DrawnSprite {
    std::uint32_t texture = 0; // GL name
    std::uint32_t flags = 0;
    std::vector<double> destMinAndSize;
    std::vector<double> posCosSin;
    double zOffset = 0.0;
};

// A renderer on the recording OpenGL. Its program declares what the sprite shaders declare, at the locations 0 to 7 in
// this order: uViewProjection, uDestMinAndSize, uPosCosSin, uMirrorFlags, uTexture (unit 0), zOffset,
// uGammaGainSaturation, uTint. Its GL names: program 1, vertex array 2, sampler 3.
class SpriteScene {
public:
    SpriteScene();

    // A descriptor of that GL name and size in texels.
    static Texture2D texture(std::uint32_t name, std::uint32_t width, std::uint32_t height);

    // The sprites drawn since the last call, in order.
    std::vector<DrawnSprite> takeSprites();

    RecordingGl gl;
};

} // namespace dunkman
