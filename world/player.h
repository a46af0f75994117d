#pragma once

#include "world/registry.h"
#include "world/walker.h"
#include "world/weapon.h"

namespace dunkman {

// The hero: steered by the key states, kept inside the play area, with at most one weapon in hand.
class Player final : public Walker {
public:
    static constexpr ObjectType type = ObjectType::Player;

    Player();
    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;
    void draw() override;

    // The weapon in hand. A weapon picked up in this step is still in its bucket too until the world applies
    // its queues.
    Owned<Weapon> heldWeapon;
    double handX = 0.0; // where the weapon is held; kept from the last pose while unarmed
    double handY = 0.0;
    double handAngle = 0.0; // degrees
    double strikeX = 0.0;   // where the weapon hits, handed to its attack
    double strikeY = 0.0;
    Texture2D unarmedImage;
    Texture2D armedImage;

private:
    void steer();
    void stayInPlayArea();
    Vec2 reachPoint() const;
    void attackWithHeldWeapon();
    void dropHeldWeapon(Vec2 reach);
    Interactable* nearestItem(Vec2 reach) const;
    void take(Weapon& weapon);
    void poseHeldWeapon();
    void drawHeldWeapon();
    double facingSide() const;
};

} // namespace dunkman
