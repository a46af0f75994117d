#include "base/frame_state.h"

namespace dunkman {

double frameDelta = 0.0;
double elapsedTime = 0.0;
double aspectRatio = 1.0;
std::uint32_t clientWidth = 0;
std::uint32_t clientHeight = 0;
InputMode inputMode = InputMode::Replay;

void resetFrameState() {
    frameDelta = 0.0;
    elapsedTime = 0.0;
    aspectRatio = 1.0;
    clientWidth = 0;
    clientHeight = 0;
    inputMode = InputMode::Replay;
}

} // namespace dunkman
