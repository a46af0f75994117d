#pragma once

// What OpenGL was last told to use. Process-wide; main thread.
namespace dunkman {

class ProgramBase;
class MaterialBase;

extern const ProgramBase* currentProgram;   // last passed to glUseProgram; null: none
extern const MaterialBase* currentMaterial; // whose values were last uploaded; null: none

// Forgets both without touching OpenGL.
void resetBindingState();

} // namespace dunkman
