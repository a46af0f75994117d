#pragma once

#include "world/weapon.h"

namespace dunkman {

// A weapon whose attack throws a projectile that looks like it. The weapon itself stays in the hand.
class RangedWeapon : public Weapon {
public:
    static constexpr ObjectType type = ObjectType::RangedWeapon;

    RangedWeapon();
    ObjectType getType() const override { return type; }

    // Throws from the strike point. Needs a Player in the world, whose hand gives the projectile its depth.
    void attack(Vec2 wielderPosition, Vec2 strikePoint, bool wielderMirrorX) override;

    // Fields of data files.
    Vec2 initialVelocity{3.0, 6.0};
};

} // namespace dunkman
