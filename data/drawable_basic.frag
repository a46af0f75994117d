#version 450

// Colours one sprite. Blending is off: a fragment is drawn whole or not at all.

#include "drawable_sprite.glsl"

layout(binding = 0) uniform sampler2D uTexture;
uniform vec3 uGammaGainSaturation;
uniform vec3 uTint;

in vec2 texturePoint;
in float heightInPicture;

layout(location = 0) out vec4 fragmentColour;

const float cutOutAlpha = 0.5;

float lumaOf(vec3 colour) {
    return dot(colour, vec3(0.299, 0.587, 0.114));
}

// The part of the loading picture that progress has not reached yet.
vec3 muted(vec3 colour) {
    return mix(vec3(lumaOf(colour)), colour, 0.2) * 0.5 + 0.2;
}

void main() {
    vec4 texel = texture(uTexture, texturePoint);
    if (texel.a < cutOutAlpha) {
        discard;
    }
    // Transparent texels are black, so a filtered colour comes multiplied by its alpha. Left so, every outline would
    // have a dark fringe.
    vec3 colour = texel.rgb / texel.a;

    if ((uMirrorFlags & loadingBits) == loadingBits && heightInPicture > zOffset) {
        colour = muted(colour);
    }
    // Most sprites have nothing to adjust. The test also keeps their texels to the last bit, which a power of 1 need
    // not.
    if (uGammaGainSaturation != vec3(1.0)) {
        float gamma = uGammaGainSaturation.x;
        float gain = uGammaGainSaturation.y;
        float saturation = uGammaGainSaturation.z;
        colour = mix(vec3(lumaOf(colour)), colour, saturation) * gain;
        colour = pow(max(colour, vec3(0.0)), vec3(gamma));
    }
    fragmentColour = vec4(colour * uTint, 1.0);
}
