#include "render/sprite.h"

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "render/binding_state.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"

namespace dunkman {
namespace {

template <typename... Numbers> std::array<float, sizeof...(Numbers)> floatsOf(Numbers... numbers) {
    return {static_cast<float>(numbers)...};
}

} // namespace

void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset) {
    RendererObjects& objects = *rendererObjects;
    Material& material = objects.material;
    if (currentMaterial != &material) {
        material.applyRenderState();
        material.bind();
    }
    const double width = scale.x * size.x;
    const double height = scale.y * size.y;
    if (mirrorX) {
        pivot.x = 1.0 - pivot.x;
    }
    const double radians = angle * pi / -180.0;
    const std::uint32_t flags =
        (static_cast<std::uint32_t>(mode) * 2 + (mirrorY ? 1u : 0u)) * 2 + (mirrorX ? 1u : 0u);

    const SpriteUniforms& uniforms = objects.uniforms;
    // The minus signs stand outside the products: a pivot of 0 gives -0.0.
    material.setUniform(uniforms.destMinAndSize,
                        UniformValue(floatsOf(-(pivot.x * width), -(pivot.y * height), width, height)));
    material.setUniform(uniforms.posCosSin,
                        UniformValue(floatsOf(position.x, position.y, exactCos(radians), exactSin(radians))));
    material.setUniform(uniforms.mirrorFlags, UniformValue(flags));
    material.setUniform(uniforms.texture, UniformValue(SampledTexture{&texture, &objects.sampler}));
    material.setUniform(uniforms.zOffset, UniformValue(static_cast<float>(zOffset)));
    material.setUniform(uniforms.gammaGainSaturation, UniformValue(floatsOf(gamma, gain, saturation)));
    material.setUniform(uniforms.tint, UniformValue(floatsOf(tintR, tintG, tintB)));
    objects.quad.draw();
}

void setScreenProjection() {
    const float scaleX = 1.0f / 9.0f;
    const float scaleY = 1.0f / (static_cast<float>(18.0 / aspectRatio) * 0.5f);
    setViewProjection({scaleX, 0.0f, 0.0f, 0.0f,  //
                       0.0f, scaleY, 0.0f, 0.0f,  //
                       0.0f, 0.0f, -1.0f, 0.0f,   //
                       0.0f, 0.0f, -0.0f, 1.0f}); //
}

} // namespace dunkman
