#include "render/sprite.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <optional>

#include "render/binding_state.h"
#include "render/clear.h"
#include "render/footprint.h"
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
    return material == &objects.basic.material ||
           (objects.software && material == &objects.software->plain.material);
}

// From one program to the other the render state stays, with what the caller has changed of it.
void use(const RendererObjects& objects, SpriteProgram& program, const SampledTexture& texture) {
    if (bindingState.currentMaterial == &program.material) {
        return;
    }
    if (!isSpriteMaterial(objects, bindingState.currentMaterial)) {
        program.material.applyRenderState();
    }
    if (program.material.hasUniform(program.uniforms.texture)) {
        // Binding sends all values again, and the texture of the last sprite that it drew may be gone by now.
        program.material.setUniform(program.uniforms.texture, texture);
    }
    program.material.bind();
}

// Whether the pixels of a sprite are closer to each other than the texels of its texture in full size: then OpenGL samples no
// other level. Drivers may reckon a little more than the true distance, where a sprite is turned by up to the root of 2.
bool isMagnified(const Texture2D& texture, const Placement& placement, const Matrix4& view) {
    constexpr double mostTexelsPerPixel = 0.996;
    constexpr double mostWhenTurned = 0.7;
    const std::optional<Footprint> footprint = footprintOf(placement, view);
    const bool isTurned = placement.posCosSin[3] != 0.0f;
    return footprint &&
           texelsPerPixel(*footprint, texture) < (isTurned ? mostWhenTurned : mostTexelsPerPixel);
}

} // namespace

void drawSprite(const Texture2D& texture, bool mirrorX, bool mirrorY, SpriteMode mode, double gamma,
                double gain, double saturation, double tintR, double tintG, double tintB, Vec2 position,
                Vec2 size, Vec2& pivot, Vec2 scale, double angle, double zOffset) {
    assert(rendererObjects != nullptr);
    RendererObjects& objects = *rendererObjects;
    if (mirrorX) {
        pivot.x = 1.0 - pivot.x;
    }
    const Placement placement = placementOf(position, size, pivot, scale, angle);
    const bool isPlain = gamma == 1.0 && gain == 1.0 && saturation == 1.0 && mode != SpriteMode::Loading;
    SpriteProgram& program = objects.software && isPlain ? objects.software->plain : objects.basic;
    const bool byMagnifier = objects.software && isMagnified(texture, placement, objects.view);
    const Sampler& sampler = byMagnifier ? objects.software->magnifier : objects.sampler;
    const SampledTexture sampled = {&texture, &sampler};
    use(objects, program, sampled);
    const std::uint32_t flags =
        (static_cast<std::uint32_t>(mode) * 2 + (mirrorY ? 1u : 0u)) * 2 + (mirrorX ? 1u : 0u);

    Material& material = program.material;
    const SpriteUniforms& uniforms = program.uniforms;
    material.setUniform(uniforms.destMinAndSize, placement.destMinAndSize);
    material.setUniform(uniforms.posCosSin, placement.posCosSin);
    material.setUniform(uniforms.mirrorFlags, flags);
    material.setUniform(uniforms.texture, sampled);
    material.setUniform(uniforms.zOffset, static_cast<float>(zOffset));
    material.setUniform(uniforms.gammaGainSaturation, floatsOf(gamma, gain, saturation));
    material.setUniform(uniforms.tint, floatsOf(tintR, tintG, tintB));
    VisibleParts visible;
    if (objects.software && !bindingState.isScissored) {
        const auto& known = objects.software->coverage;
        if (const auto coverage = known.find(texture.name); coverage != known.end()) {
            visible = visibleParts(texture, coverage->second, mirrorX, mirrorY, placement, objects.view);
        }
    }
    if (visible.count == 0) {
        objects.quad.draw();
    }
    for (std::size_t part = 0; part < visible.count; ++part) {
        const Scissor scissor(visible.parts[part]);
        objects.quad.draw();
    }
}

void drawAtOnce(const Sprite& sprite) {
    finishClear();
    Vec2 pivot = sprite.pivot;
    drawSprite(sprite.texture, sprite.mirrorX, sprite.mirrorY, sprite.mode, sprite.gamma, sprite.gain,
               sprite.saturation, sprite.tintR, sprite.tintG, sprite.tintB, sprite.position, sprite.size,
               pivot, sprite.scale, sprite.angle, sprite.zOffset);
}

} // namespace dunkman
