#include "world/arena.h"

#include <algorithm>
#include <array>
#include <string>

#include "assets/catalog.h"
#include "base/fatal.h"
#include "base/frame_state.h"
#include "world/beach.h"
#include "world/camera.h"
#include "world/describe.h"
#include "world/object_class.h"
#include "world/player.h"
#include "world/random.h"
#include "world/registry.h"
#include "world/spawn_point.h"
#include "world/trace_line.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Arena::spawnsRemaining>("spawnsRemaining", "zombies still to come; below 0: without end"),
    field<&Arena::maxSimultaneousZombies>("maxSimultaneousZombies", "most that live at once",
                                          {1, largestSensible}),
    field<&Arena::zombieTimer>("zombieTimer", "seconds from one zombie to the next", positive),
    field<&Arena::enemyVariant>("enemyVariant", "who comes: 0 to 3 a recipe, 4 the scripted wave",
                                {0, lastScriptVariant}),
};

constexpr double huntingRadius = 100.0; // units: an arena's zombie notices the hero wherever he is

bool contains(const Rect& area, Vec2 point) {
    return area.minX <= point.x && point.x <= area.maxX && area.minY <= point.y && point.y <= area.maxY;
}

} // namespace

template <> const ObjectClass& objectClass<Arena>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Arena>(),
        .meaning = "A fight: when the hero walks past its x, it holds the camera on its middle and lets "
                   "zombies in until all have come and fallen.",
        .fields = fields,
        .rule = "enemyVariant: 0 \"zombie\", 1 \"weakZombie\", 2 \"zombie2HpFast\" and 3 \"zombieBanana\" "
                "are recipes; 4 is the scripted wave, which has a number of its own. Whom an arena lets in "
                "notices the hero wherever he is.",
    };
    return record;
}

const char* zombieRecipe(std::int32_t variant) {
    const bool isKnown = variant >= 0 && variant < static_cast<std::int32_t>(zombieRecipes.size());
    return zombieRecipes[isKnown ? static_cast<std::size_t>(variant) : 0];
}

void Arena::lateUpdate() {
    if (active) {
        fight();
    } else {
        startWhenPassed();
    }
}

void Arena::startWhenPassed() {
    const Player* hero = world.first<Player>();
    if (hero == nullptr || !(hero->position.x > position.x)) {
        return;
    }
    active = true;
    if (enemyVariant >= firstScriptVariant) {
        script = waveScriptFor(enemyVariant);
        if (script == nullptr) {
            fatal(describe(*this) + ": enemyVariant " + std::to_string(enemyVariant) +
                  " selects no wave script. Where scene.json5, prefabs.json5 or recipes.json5 sets it, use 0 "
                  "to 3 " +
                  "for a kind of zombie or 4 for the scripted wave.");
        }
        spawnsRemaining = static_cast<std::int32_t>(script->steps.size());
    }
    Camera* camera = world.first<Camera>();
    if (camera == nullptr) {
        return;
    }
    const Rect view = viewRectangle(*camera);
    camera->target = this;
    world.walk<SpawnPoint>([&](SpawnPoint& point) {
        if (contains(view, point.position)) {
            spawnPoints.push_back(&point);
        }
    });
}

void Arena::fight() {
    // Whoever is on the way out counts as dead even if a weapon of negative damage healed him in his last step:
    // the world frees him at the end of it.
    std::erase_if(liveZombies, [](const Zombie* zombie) {
        return zombie->health < 0 || world.isQueuedForDestroy(*zombie);
    });
    if (cooling) {
        cooldownElapsed += frameState.frameDelta;
        if (cooldownElapsed >= zombieTimer) {
            cooldownElapsed = 0.0;
            cooling = false;
        }
    }
    Camera* camera = world.first<Camera>();
    if (spawnsRemaining != 0) {
        if (cooling || static_cast<std::int64_t>(liveZombies.size()) >= maxSimultaneousZombies) {
            return;
        }
        cooling = true;
        letZombieIn(script != nullptr ? scriptedSpawn(camera) : randomSpawn(camera));
        // A negative quota counts down for ever; at its lowest it wraps round.
        spawnsRemaining = static_cast<std::int32_t>(static_cast<std::int64_t>(spawnsRemaining) - 1);
        if (spawnsRemaining != 0) {
            return;
        }
    }
    if (!liveZombies.empty()) {
        return;
    }
    if (camera != nullptr) {
        camera->target = nullptr;
    }
    world.queueDestroy(*this);
}

Arena::Spawn Arena::scriptedSpawn(const Camera* camera) const {
    const WaveStep& step = script->steps[script->steps.size() - static_cast<std::size_t>(spawnsRemaining)];
    if (step.place < 0) {
        return {edgePlace(step.place, camera), step.variant};
    }
    const auto number = static_cast<std::size_t>(step.place);
    if (number >= spawnPoints.size()) {
        fatal(describe(*this) + ": its wave script wants spawn point " + std::to_string(number) +
              ", but only " + std::to_string(spawnPoints.size()) +
              " were in view when the hero came. Place a SpawnPoint near the arena in scene.json5.");
    }
    return {spawnPoints[number]->position, step.variant};
}

Arena::Spawn Arena::randomSpawn(const Camera* camera) const {
    // The order of the draws is place, index, then an edge's height; the index is drawn even when the place
    // turns out to be an edge. Recordings depend on it.
    const auto count = static_cast<std::int64_t>(spawnPoints.size());
    const auto choices = static_cast<std::uint64_t>(std::min<std::int64_t>(count - 1, 1) + 3);
    const std::int64_t place = static_cast<std::int64_t>(nextRandom() % choices) - 2;
    std::size_t index = 0;
    if (count > 0) {
        index = static_cast<std::size_t>(nextRandom() % static_cast<std::uint64_t>(count));
    }
    if (place < 0) {
        return {edgePlace(place, camera), enemyVariant};
    }
    return {spawnPoints[index]->position, enemyVariant};
}

Vec2 Arena::edgePlace(std::int64_t edge, const Camera* camera) const {
    if (camera == nullptr) {
        fatal(describe(*this) + ": place " + std::to_string(edge) +
              " is an edge of the view, but the scene has no Camera; add one to scene.json5.");
    }
    const Rect view = viewRectangle(*camera);
    const double y = nextRandomFraction() * beachDepth - beachHalfDepth;
    return {edge == leftViewEdge ? view.minX : view.maxX, y};
}

void Arena::letZombieIn(const Spawn& spawn) {
    const char* name = zombieRecipe(spawn.variant);
    const JsonValue* recipe = assetCatalog.recipes.find(name);
    const auto asked = [&] {
        return "The recipe \"" + std::string(name) + "\" is what " + describe(*this) + " lets in.";
    };
    OwnedObject made =
        recipe != nullptr ? namingPlace(asked, [recipe] { return createFromValue(*recipe); }) : nullptr;
    if (!made || made->getType() != ObjectType::Zombie) {
        fatal(describe(*this) + ": the recipe \"" + name + "\" of enemyVariant " +
              std::to_string(spawn.variant) +
              (recipe == nullptr ? " is missing from recipes.json5; add it."
                                 : " makes no Zombie; correct its _type in recipes.json5."));
    }
    auto* zombie = static_cast<Zombie*>(made.get());
    zombie->position = spawn.place;
    zombie->searchRadius = huntingRadius;
    world.queueAdd(std::move(made));
    liveZombies.push_back(zombie);
}

void Arena::traceState(TraceLine& line) const {
    Object::traceState(line);
    line.add("active", active);
    line.add("spawnsRemaining", spawnsRemaining);
    line.add("cooling", cooling);
    line.add("cooldownElapsed", cooldownElapsed);
    line.add("live", liveZombies.size());
    line.add("points", spawnPoints.size());
}

} // namespace dunkman
