#pragma once

#include "world/drawable.h"

namespace dunkman {

// A drawable with a velocity that friction wears down.
class Movable : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::Movable;

    ObjectType getType() const override { return type; }
    void update() override; // turns, moves, then damps
    void traceState(TraceLine& line) const override;

    // Fields of data files.
    bool autoMirror = false;
    bool inverseMirror = false;
    Vec2 friction{8.0, 8.0};
    Vec2 acceleration{20.0, 20.0};
    Vec2 velocity;
};

} // namespace dunkman
