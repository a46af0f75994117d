#include "world/movable.h"

#include <array>

#include "base/frame_state.h"
#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Movable::autoMirror>("autoMirror", "faces the direction in which it moves"),
    field<&Movable::inverseMirror>("inverseMirror",
                                   "its mirrorX while moving right; true if the picture faces left"),
    field<&Movable::friction>("friction", "damping rate for each axis, 1/s", notNegative),
    field<&Movable::acceleration>("acceleration", "thrust of what steers, for each axis, units/s^2"),
    field<&Movable::velocity>("velocity", "units/s"),
};

// First order on purpose, frame-rate dependence included: the feel of walking comes from it. A step longer
// than the reciprocal of the friction stops the body instead of turning it round.
double dampingFactor(double friction) {
    const double factor = 1.0 - friction * frameState.frameDelta;
    return factor > 0.0 ? factor : 0.0;
}

} // namespace

template <> const ObjectClass& objectClass<Movable>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Movable>(),
        .meaning = "A picture that moves and is slowed by friction.",
        .fields = fields,
    };
    return record;
}

void Movable::update() {
    if (autoMirror) {
        if (velocity.x > 0.0) {
            mirrorX = inverseMirror;
        }
        if (velocity.x < 0.0) {
            mirrorX = !inverseMirror;
        }
    }
    position.x += velocity.x * frameState.frameDelta;
    position.y += velocity.y * frameState.frameDelta;
    velocity.x *= dampingFactor(friction.x);
    velocity.y *= dampingFactor(friction.y);
}

void Movable::traceState(TraceLine& line) const {
    Drawable::traceState(line);
    line.add("vx", velocity.x);
    line.add("vy", velocity.y);
}

} // namespace dunkman
