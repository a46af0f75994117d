#include "world/movable.h"

#include "base/frame_state.h"
#include "world/properties.h"

namespace dunkman {

namespace {

// First order on purpose, frame-rate dependence included: the feel of walking comes from it. A step longer
// than the reciprocal of the friction stops the body instead of turning it round.
double dampingFactor(double friction) {
    const double factor = 1.0 - friction * frameDelta;
    return factor > 0.0 ? factor : 0.0;
}

} // namespace

void Movable::update() {
    if (autoMirror) {
        if (velocity.x > 0.0) {
            mirrorX = inverseMirror;
        }
        if (velocity.x < 0.0) {
            mirrorX = !inverseMirror;
        }
    }
    position.x += velocity.x * frameDelta;
    position.y += velocity.y * frameDelta;
    velocity.x *= dampingFactor(friction.x);
    velocity.y *= dampingFactor(friction.y);
}

void Movable::readProperties(const JsonValue& value) {
    Drawable::readProperties(value);
    readBoolProperty(value, "autoMirror", autoMirror);
    readBoolProperty(value, "inverseMirror", inverseMirror);
    readPairProperty(value, "friction", friction);
    readPairProperty(value, "acceleration", acceleration);
    readPairProperty(value, "velocity", velocity);
}

JsonValue Movable::writeProperties() const {
    JsonValue value = Drawable::writeProperties();
    writeProperty(value, "autoMirror", autoMirror);
    writeProperty(value, "inverseMirror", inverseMirror);
    writeProperty(value, "friction", friction);
    writeProperty(value, "acceleration", acceleration);
    writeProperty(value, "velocity", velocity);
    return value;
}

} // namespace dunkman
