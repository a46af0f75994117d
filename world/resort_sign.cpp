#include "world/resort_sign.h"

#include "base/frame_state.h"
#include "world/numbers.h"
#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

template <> const ObjectClass& objectClass<ResortSign>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<ResortSign>(),
        .meaning = "The sign of the resort, whose nail gives way shortly "
                   "after the game begins: it sets its own tilt.",
    };
    return record;
}

void ResortSign::update() {
    clock += frameState.frameDelta;
    const double progress = clamp((clock - startTime) / (endTime - startTime), 0.0, 1.0);
    tilt = fromTilt + (toTilt - fromTilt) * progress;
}

void ResortSign::traceState(TraceLine& line) const {
    Drawable::traceState(line);
    line.add("clock", clock);
}

} // namespace dunkman
