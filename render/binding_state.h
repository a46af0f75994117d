#pragma once

// What OpenGL was last told to use. Main thread only.
namespace dunkman {

class ProgramBase;
class MaterialBase;

struct BindingState {
    const ProgramBase* currentProgram = nullptr;   // last passed to glUseProgram; null: none
    const MaterialBase* currentMaterial = nullptr; // whose values were last uploaded; null: none
    bool isScissored = false;                      // whether a scissor rectangle is in force
    bool isDiscarding = false;                     // whether all pixels are discarded
};

extern const BindingState& bindingState;

} // namespace dunkman
