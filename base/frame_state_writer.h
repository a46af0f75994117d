#pragma once

#include "base/frame_state.h"

// For the few who set what everybody reads: the start-up, the main loop, the replay when it ends, tests.
namespace dunkman::writable {

extern FrameState frameState;

} // namespace dunkman::writable
