#include "world/resort_sign.h"

#include "base/frame_state.h"
#include "world/numbers.h"

namespace dunkman {

void ResortSign::update() {
    clock += frameDelta;
    const double progress = clamp((clock - startTime) / (endTime - startTime), 0.0, 1.0);
    tilt = fromTilt + (toTilt - fromTilt) * progress;
}

} // namespace dunkman
