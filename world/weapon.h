#pragma once

#include <cstdint>

#include "world/interactable.h"
#include "world/timer.h"

namespace dunkman {

// An item that the hero carries and swings. In the world it wobbles and, when highlighted, pulses; in the
// hero's hand the Player poses, draws and wears it out.
class Weapon : public Interactable {
public:
    static constexpr ObjectType type = ObjectType::Weapon;

    ObjectType getType() const override { return type; }
    void traceState(TraceLine& line) const override;
    void draw() override; // clears `highlighted`

    // Makes the weapon's effect happen now; the wielder looks after timer and durability. Here: every zombie
    // within collisionRadius of the strike point takes the damage.
    virtual void attack(Vec2 wielderPosition, Vec2 strikePoint, bool wielderMirrorX);

    // Fields of data files.
    Timer attackTimeout{0.4}; // running: no new attack yet
    double timeoutAnimationPercentage = 0.5;
    Vec2 attackArc{15.0, 45.0};
    Vec2 handPivot{0.5, 0.0};
    double animationAngle = 0.0; // written by the posing
    Vec2 collisionPivot{0.5, 1.0};
    double collisionRadius = 0.1;
    std::int32_t damage = 1;
    std::int32_t durability = -1;
};

} // namespace dunkman
