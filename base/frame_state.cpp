#include "base/frame_state_writer.h"

namespace dunkman {

constinit FrameState writable::frameState;
constinit const FrameState& frameState = writable::frameState;

} // namespace dunkman
