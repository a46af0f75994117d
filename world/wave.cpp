#include "world/wave.h"

#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/object_class.h"

namespace dunkman {

namespace {

constexpr int copies = 100;
constexpr double stripStart = 35.0; // units left of the position
constexpr double swing = 0.25;      // units

} // namespace

template <> const ObjectClass& objectClass<Wave>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Wave>(),
        .meaning = "A strip of surf: a hundred copies of one picture side by "
                   "side, the first 35 units to the left, bobbing together.",
    };
    return record;
}

void Wave::draw() {
    const Vec2 saved = position;
    const double phase = position.y * 1.5 + frameState.elapsedTime * 2.0;
    position.y = position.y - std::abs(exactCos(phase)) * swing;
    position.x = position.x + exactSin(phase) * swing - stripStart;
    for (int copy = 0; copy < copies; ++copy) {
        drawScaled({1.0, 1.0}, tilt);
        position.x += size.x;
    }
    position = saved;
}

} // namespace dunkman
