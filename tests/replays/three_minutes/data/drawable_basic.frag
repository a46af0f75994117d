#version 450

#include "drawable_sprite.glsl"

layout(binding = 0) uniform sampler2D uTexture;
uniform vec3 uGammaGainSaturation;
uniform vec3 uTint;

layout(location = 0) out vec4 fragmentColour;

void main() {
    fragmentColour = vec4(uGammaGainSaturation * uTint, uMirrorFlags == 0u ? 0.0 : 1.0);
}
