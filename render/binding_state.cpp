#include "render/binding_state_writer.h"

namespace dunkman {

constinit BindingState writable::bindingState;
constinit const BindingState& bindingState = writable::bindingState;

} // namespace dunkman
