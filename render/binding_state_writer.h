#pragma once

#include "render/binding_state.h"

// For those who bind: programs, materials, the renderer, tests.
namespace dunkman::writable {

extern BindingState bindingState; // a fresh one forgets without touching OpenGL

} // namespace dunkman::writable
