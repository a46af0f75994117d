#version 450

// Places the four corners of one sprite. There is no vertex data: a triangle strip of four vertices comes in, and
// each finds its corner from its number.

#include "drawable_sprite.glsl"

uniform mat4 uViewProjection;
uniform vec4 uDestMinAndSize; // lower corner relative to the position, then the size
uniform vec4 uPosCosSin;      // position, then cosine and sine of the clockwise angle
uniform vec3 uTint;

out vec2 texturePoint;
out float heightInPicture;    // 0 at the bottom edge, 1 at the top edge
flat out float mutedFrom;     // the height from which on the picture is muted; above 1: nowhere
flat out float gammaBend;     // what bends colours as gamma does; 0: not at all
flat out vec3 tint;           // handed on: software would look up a uniform anew for every pixel

// World sprites are sorted by depths from -depthRange to depthRange, which is far more than a beach is long from front
// to back. Within, the map is linear: a flat sprite, whose corners differ in depth, then sorts right all across.
const float depthRange = 100.0;
const float depthScale = 1.0 / 256.0;

// Nearest and farthest depth that is drawn. 1 is what the depth buffer is cleared to, and only less than that passes.
const float nearest = -1.0;
const float farthest = 0.9999;

// Place in the depth buffer, -1 (near) to 1 (far), of what lies `depth` units towards the viewer. render/sorting_depth.cpp knows it too.
float sortingDepth(float depth, bool isOverlay) {
    bool isPerspective = uViewProjection[2][3] != 0.0;
    float sorted;
    if (!isPerspective) {
        // The parallel views say with their z column how depth counts: in the interface view one to one, under the
        // health display a hundredth of it.
        sorted = uViewProjection[2][2] * depth + uViewProjection[3][2];
    } else if (isOverlay) {
        // Between the world and the health display, which is close to 0.
        sorted = 0.1 - clamp(depth, -1.0, 1.0) * 0.009;
    } else {
        // From above 0.109 to below 0.891.
        sorted = 0.5 - clamp(depth, -depthRange, depthRange) * depthScale;
    }
    return clamp(sorted, nearest, farthest);
}

void main() {
    // (0,0) (1,0) (0,1) (1,1): both triangles of the strip run counter-clockwise, so culling keeps them.
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    vec2 fromPivot = uDestMinAndSize.xy + corner * uDestMinAndSize.zw;
    float cosine = uPosCosSin.z;
    float sine = uPosCosSin.w;
    vec2 place = uPosCosSin.xy + vec2(cosine * fromPivot.x + sine * fromPivot.y,
                                      cosine * fromPivot.y - sine * fromPivot.x);

    // What stands lower on the beach is nearer. A standing sprite has one depth for all its corners, that of its
    // position; a flat one lies in the ground.
    bool isOverlay = (uMirrorFlags & interfaceBit) != 0u;
    bool isFlat = (uMirrorFlags & flatBit) != 0u;
    float depth;
    if (isOverlay) {
        depth = isFlat ? 0.0 : zOffset;
    } else {
        depth = zOffset - (isFlat ? place.y : uPosCosSin.y);
    }

    // Depth sorts but never moves or shrinks a sprite: all of them lie in the plane z = 0.
    gl_Position = uViewProjection * vec4(place, 0.0, 1.0);
    gl_Position.z = sortingDepth(depth, isOverlay) * gl_Position.w;

    // The first row of texels is the top of the picture.
    texturePoint.x = (uMirrorFlags & mirrorXBit) != 0u ? 1.0 - corner.x : corner.x;
    texturePoint.y = (uMirrorFlags & mirrorYBit) != 0u ? 1.0 - corner.y : corner.y;
    heightInPicture = corner.y;

    // Of the loading picture, zOffset carries the progress.
    mutedFrom = (uMirrorFlags & loadingBits) == loadingBits ? zOffset : 2.0;
    // The bend that takes a half to where the power does.
    float gamma = uGammaGainSaturation.x;
    tint = uTint;
    gammaBend = gamma == 1.0 ? 0.0 : exp2(gamma) - 2.0;
}
