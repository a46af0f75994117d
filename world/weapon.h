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
    void readProperties(const JsonValue& value) override;
    JsonValue writeProperties() const override;
    void draw() override; // clears `highlighted`

    // Makes the weapon's effect happen now; the wielder looks after timer and durability. Here: every zombie
    // within collisionRadius of the strike point takes the damage.
    virtual void attack(Vec2 wielderPosition, Vec2 strikePoint, bool wielderMirrorX);

    Timer attackTimeout{0.4};                // running: no new attack yet
    double timeoutAnimationPercentage = 0.5; // share of attackTimeout that the swing takes
    Vec2 attackArc{15.0, 45.0};              // degrees; x: forward swing, y: back swing
    Vec2 handPivot{0.5, 0.0};                // fraction of the size that sits in the hand
    double animationAngle = 0.0;             // degrees; written by the posing
    Vec2 collisionPivot{0.5, 1.0};           // fraction of the size that hits
    double collisionRadius = 0.1;            // world units
    std::int32_t damage = 1;
    std::int32_t durability = -1; // attacks left; negative: unbreakable
};

} // namespace dunkman
