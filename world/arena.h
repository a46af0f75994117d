#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "world/arena_script.h"
#include "world/object.h"

namespace dunkman {

class Camera;
class SpawnPoint;
class Zombie;

// A line across the beach. When the hero walks past it, it holds the camera, lets zombies in one after
// another until its quota is spent and all of them are dead, then frees the camera and leaves the world.
class Arena final : public Object {
public:
    static constexpr ObjectType type = ObjectType::Arena;

    ObjectType getType() const override { return type; }
    void lateUpdate() override;
    void traceState(TraceLine& line) const override;

    const WaveScript* script = nullptr; // null: places are drawn at random
    bool active = false;
    std::vector<SpawnPoint*> spawnPoints; // inside the view when the arena became active; not owned
    bool cooling = false;
    double cooldownElapsed = 0.0; // seconds

    // Fields of data files.
    std::int32_t spawnsRemaining = 5;
    std::int32_t maxSimultaneousZombies = 2;
    double zombieTimer = 1.0;
    std::int32_t enemyVariant = 0;

    // Zombies let in by this arena and still alive; not owned. The pointers are good until the step ends: the
    // dead are dropped in lateUpdate, which comes after all damage and before the world frees anything.
    std::vector<Zombie*> liveZombies;

private:
    struct Spawn {
        Vec2 place;
        std::int32_t variant;
    };

    void startWhenPassed();
    void fight();
    Spawn scriptedSpawn(const Camera* camera) const;
    Spawn randomSpawn(const Camera* camera) const;
    Vec2 edgePlace(std::int64_t edge, const Camera* camera) const;
    void letZombieIn(const Spawn& spawn);
};

// The recipes of the zombies that arenas let in, by their variant.
inline constexpr std::array<const char*, 4> zombieRecipes = {"zombie", "weakZombie", "zombie2HpFast",
                                                             "zombieBanana"};

// The recipe that a variant of zombie is made from; the first one for a number that is no variant.
const char* zombieRecipe(std::int32_t variant);

} // namespace dunkman
