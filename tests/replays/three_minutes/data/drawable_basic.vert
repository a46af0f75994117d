#version 450

// As little as the program can use: nothing is seen in a run on the simulated machine.

#include "drawable_sprite.glsl"

uniform mat4 uViewProjection;
uniform vec4 uDestMinAndSize;
uniform vec4 uPosCosSin;

void main() {
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    gl_Position = uViewProjection * vec4(uPosCosSin.xy + uDestMinAndSize.xy + corner * uDestMinAndSize.zw, zOffset, 1.0);
}
