#pragma once

#include "world/drawable.h"

namespace dunkman {

// A drawable with a velocity that friction wears down.
class Movable : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::Movable;

    ObjectType getType() const override { return type; }
    void update() override; // turns, moves, then damps
    void readProperties(const JsonValue& value) override;
    JsonValue writeProperties() const override;

    bool autoMirror = false;       // face the direction of horizontal travel
    bool inverseMirror = false;    // the value of mirrorX while moving right
    Vec2 friction{8.0, 8.0};       // damping rate, 1/s
    Vec2 acceleration{20.0, 20.0}; // units/s^2; for subclasses that steer
    Vec2 velocity;                 // units/s
};

} // namespace dunkman
