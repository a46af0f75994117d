#pragma once

#include <vector>

#include "base/geometry.h"
#include "world/player.h"
#include "world/zombie.h"

// What a player sees on the screen: the pilot knows the world through these questions only.
namespace dunkman::playthrough {

const Player& hero();

// Zombies that are alive and on or near the screen, the nearest first. Pointers are good until the next step.
std::vector<const Zombie*> zombiesInSight();

// An arena holds the camera.
bool cameraIsHeld();

// +1 facing right, -1 facing left.
double heroFacing();

bool holdsRangedWeapon();
bool weaponIsReady();

// How far the centres of two bodies are apart, along the beach and across it together.
double distanceTo(const Zombie& zombie);

// Whether a swing of the held weapon would reach the zombie now, or in the other direction.
bool inSwing(const Zombie& zombie, double facing);

// Whether a hit would count.
bool isVulnerable(const Zombie& zombie);

// Whether the zombie stands where it can strike, and the seconds until it does (a large number when not
// winding up).
bool canStrike(const Zombie& zombie);
double secondsUntilStrike(const Zombie& zombie);

// The weapon that the pick-up key would take now, whatever is in hand; null for none.
const Weapon* weaponInReach();

// The zombie that a throw in the direction would hit first, if the zombies walk on as they do; null for none.
const Zombie* throwTarget(double facing);

} // namespace dunkman::playthrough
