#version 450

// Colours one sprite. Blending is off: a fragment is drawn whole or not at all.

#include "drawable_sprite.glsl"

layout(binding = 0) uniform sampler2D uTexture;

in vec2 texturePoint;
in float heightInPicture;
flat in float mutedFrom;
flat in float gammaBend;
flat in vec3 tint;

layout(location = 0) out vec4 fragmentColour;

const float cutOutAlpha = 0.5;

float lumaOf(vec3 colour) {
    return dot(colour, vec3(0.299, 0.587, 0.114));
}

// Gamma as a bend of the way from 0 to 1 (bend 0: straight), a fraction in place of a power: without a graphics card the
// power would cost every texel of the beach as much as a quarter of its frame.
vec3 bent(vec3 colour, float bend) {
    return colour / (clamp(1.0 - colour, 0.0, 1.0) * bend + 1.0);
}

// Most sprites have nothing to adjust, and software takes both sides of every branch. So all go the same short way, on which
// a saturation and gain of 1, a lift of 0 and a bend of 0 keep a colour to the last bit.
vec3 adjusted(vec3 colour) {
    float gain = uGammaGainSaturation.y;
    float saturation = uGammaGainSaturation.z;
    float lift = 0.0;
    if (heightInPicture > mutedFrom) { // what progress has not reached yet
        saturation *= 0.2;
        lift = 0.2 * gain;
        gain *= 0.5;
    }
    colour = (lumaOf(colour) * (1.0 - saturation) + colour * saturation) * gain + lift;
    return bent(colour, gammaBend);
}

void main() {
    vec4 texel = texture(uTexture, texturePoint);
    if (texel.a < cutOutAlpha) {
        discard;
    }
    // Transparent texels are black, so a filtered colour comes multiplied by its alpha. Left so, every outline would
    // have a dark fringe.
    vec3 colour = texel.rgb / texel.a;

#ifndef PLAIN_SPRITES // they come with nothing to adjust
    colour = adjusted(colour);
#endif
    fragmentColour = vec4(colour * tint, 1.0);
}
