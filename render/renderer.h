#pragma once

// The process-wide drawing objects: the basic program, its material, the quad mesh and the sampler.
namespace dunkman {

// Builds them from "drawable_basic.vert" and "drawable_basic.frag". Needs the GL entry points and a context.
// Stops the game with a message that names the file when a shader is missing or does not compile or link.
void createRenderer();

// Where every pixel is dear, OpenGL in software: from now on a second program of the same shaders, without what adjusts
// colours, draws the sprites that have nothing to adjust, nearly all; a second sampler leaves out the levels of textures that
// are not sampled anyway; and drawNearestFirst does as it says. What is drawn is the same, bit for bit. After createRenderer;
// stops the game as that does.
void prepareForSoftware();
bool isPreparedForSoftware();

// What the second program's fragment shader is told by: a definition of this name.
constexpr const char* plainSpritesDefinition = "PLAIN_SPRITES";

// Deletes them, in this order: programs (unbinding one first where it is bound), vertex array, samplers.
void releaseRenderer();

// Forgets all that render/ keeps without touching OpenGL: these, what is bound, the image tables, the entry points.
void resetRenderer();

} // namespace dunkman
