#include "world/hint.h"

#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/object_class.h"

namespace dunkman {

template <> const ObjectClass& objectClass<Hint>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Hint>(),
        .meaning = "A picture that hops, to point at something worth noticing.",
    };
    return record;
}

void Hint::draw() {
    const double savedY = position.y;
    position.y += std::abs(exactSin(frameState.elapsedTime * 4.0)) * 0.1;
    drawScaled({1.0, 1.0}, tilt);
    position.y = savedY;
}

} // namespace dunkman
