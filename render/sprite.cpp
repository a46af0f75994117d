#include "render/sprite.h"

#include <array>
#include <cassert>

#include "render/binding_state.h"
#include "render/placement.h"
#include "render/renderer_objects.h"
#include "render/scissor.h"
#include "render/visible_part.h"

namespace dunkman {
namespace {

template <typename... Numbers> std::array<float, sizeof...(Numbers)> floatsOf(Numbers... numbers) {
    return {static_cast<float>(numbers)...};
}

bool isSpriteMaterial(const RendererObjects& objects, const MaterialBase* material) {
    return material == &objects.basic.material || (objects.plain && material == &objects.plain->material);
}

// From one program to the other the render state stays, with what the caller has changed of it.
void use(const RendererObjects& objects, Material& material) {
    if (bindingState.currentMaterial == &material) {
        return;
    }
    if (!isSpriteMaterial(objects, bindingState.currentMaterial)) {
        material.applyRenderState();
    }
    material.bind();
}

} // namespace

void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset) {
    assert(rendererObjects != nullptr);
    RendererObjects& objects = *rendererObjects;
    const bool isPlain = gamma == 1.0 && gain == 1.0 && saturation == 1.0 && mode != SpriteMode::Loading;
    SpriteProgram& program = isPlain && objects.plain ? *objects.plain : objects.basic;
    Material& material = program.material;
    use(objects, material);
    if (mirrorX) {
        pivot.x = 1.0 - pivot.x;
    }
    const Placement placement = placementOf(position, size, pivot, scale, angle);
    const std::uint32_t flags =
        (static_cast<std::uint32_t>(mode) * 2 + (mirrorY ? 1u : 0u)) * 2 + (mirrorX ? 1u : 0u);

    const SpriteUniforms& uniforms = program.uniforms;
    material.setUniform(uniforms.destMinAndSize, UniformValue(placement.destMinAndSize));
    material.setUniform(uniforms.posCosSin, UniformValue(placement.posCosSin));
    material.setUniform(uniforms.mirrorFlags, UniformValue(flags));
    material.setUniform(uniforms.texture, UniformValue(SampledTexture{&texture, &objects.sampler}));
    material.setUniform(uniforms.zOffset, UniformValue(static_cast<float>(zOffset)));
    material.setUniform(uniforms.gammaGainSaturation, UniformValue(floatsOf(gamma, gain, saturation)));
    material.setUniform(uniforms.tint, UniformValue(floatsOf(tintR, tintG, tintB)));
    if (const auto part = visiblePart(texture, mirrorX, mirrorY, placement, objects.view);
        part && !bindingState.isScissored) {
        const Scissor scissor(*part);
        objects.quad.draw();
    } else {
        objects.quad.draw();
    }
}

void draw(const Sprite& sprite) {
    Vec2 pivot = sprite.pivot;
    drawSprite(sprite.texture, sprite.mirrorX, sprite.mirrorY, sprite.mode, sprite.gamma, sprite.gain,
               sprite.saturation, sprite.tintR, sprite.tintG, sprite.tintB, sprite.position, sprite.size,
               pivot, sprite.scale, sprite.angle, sprite.zOffset);
}

} // namespace dunkman
