uniform uint uMirrorFlags;
uniform float zOffset;
