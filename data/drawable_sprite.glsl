// What both stages of a sprite know. Expanded into drawable_basic.vert and drawable_basic.frag.

// Bits of uMirrorFlags.
const uint mirrorXBit = 1u;   // flip left and right
const uint mirrorYBit = 2u;   // set: the picture stands upright; clear: on its head
const uint flatBit = 4u;      // lies on the ground
const uint interfaceBit = 8u; // overlay
const uint loadingBits = flatBit | interfaceBit;

uniform uint uMirrorFlags;
uniform float zOffset; // depth offset; of the loading picture: progress from 0 to 1
uniform vec3 uGammaGainSaturation;
