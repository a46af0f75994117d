#include "render/binding_state.h"

namespace dunkman {

const ProgramBase* currentProgram = nullptr;
const MaterialBase* currentMaterial = nullptr;

void resetBindingState() {
    currentProgram = nullptr;
    currentMaterial = nullptr;
}

} // namespace dunkman
