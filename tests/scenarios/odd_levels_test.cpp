#include "tests/scenarios/play.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "world/projectile.h"

// What only a careless level or a modder brings about.
namespace dunkman {

namespace {

bool standsInTheWorld(const Zombie* zombie) {
    const auto bucket = world.objectsOfType(ObjectType::Zombie);
    return std::any_of(bucket.begin(), bucket.end(),
                       [zombie](const OwnedObject& object) { return object.get() == zombie; });
}

// A projectile kills it, its protection of no length ends, and a weapon of negative damage heals it, all in
// one step.
TEST(OddLevels, AZombieHealedInTheStepOfItsDeathIsGoneForItsArenaToo) {
    Play play(R"({"recipe": "sweeper", "position": [0, 0.8], "damage": -100},
                 {"recipe": "arena", "position": [1, 0], "spawnsRemaining": 1})");
    play.tap(keys::z).walkTo(1.1).until("a zombie comes",
                                        [] { return Play::count(ObjectType::Zombie) == 1; });
    play.zombie().invulnerableTimer.duration = 0.0;
    auto projectile = makeObject<Projectile>();
    projectile->position = {play.zombie().position.x, play.zombie().position.y + 1.0};
    projectile->groundY = -10.0;
    projectile->damage = 50;
    world.queueAdd(std::move(projectile));
    world.applyPending();

    play.hold(keys::x).step().letGo(keys::x);
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 1u);
    EXPECT_EQ(play.count(ObjectType::Zombie), 0u);
    if (play.arena() != nullptr) {
        for (const Zombie* zombie : play.arena()->liveZombies) {
            EXPECT_TRUE(standsInTheWorld(zombie));
        }
    }
    play.step();
    EXPECT_EQ(play.arena(), nullptr); // its last zombie is dead
}

TEST(OddLevels, TwoHeroesNeverHoldTheSameWeapon) {
    Play play(R"({"recipe": "hero", "position": [0.2, 0]}, {"recipe": "flamingo", "position": [0, 0.8]})");
    play.tap(keys::z);
    const auto heroes = world.objectsOfType(ObjectType::Player);
    const auto& second = static_cast<const Player&>(*heroes[1]);
    EXPECT_TRUE(play.isArmed());
    EXPECT_EQ(second.heldWeapon, nullptr);
    // Dropped by the one, it lies there in the next step; then both reach for it again.
    play.tap(keys::z).tap(keys::z).tap(keys::z).step(60);
    EXPECT_EQ(play.count(ObjectType::Flamingo) + (play.isArmed() ? 1u : 0u) + (second.heldWeapon ? 1u : 0u),
              1u);
}

TEST(OddLevels, AWeaponWithoutAnyTimeStillStrikes) {
    Play play(
        R"({"recipe": "sweeper", "position": [0, 0.8], "attackTimeout": 0, "timeoutAnimationPercentage": 0},
                 {"recipe": "zombie", "position": [3, 0], "searchRadius": -1})");
    play.tap(keys::z).tap(keys::x);
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 1u);
    EXPECT_EQ(play.hero().heldWeapon->animationAngle, 0.0); // 0 / 0 leaves it at rest
}

TEST(OddLevels, ANegativeQuotaFillsUpToTheCapAsFastAsItCan) {
    Play play(R"({"recipe": "arena", "position": [1, 0], "spawnsRemaining": -1, "zombieTimer": 0,
                  "maxSimultaneousZombies": 50})");
    play.walkTo(1.1).until(
        "fifty are in", [] { return Play::count(ObjectType::Zombie) == 50; }, 120);
    play.step(30);
    EXPECT_EQ(play.count(ObjectType::Zombie), 50u);
    EXPECT_EQ(play.arena()->spawnsRemaining, -51);
}

} // namespace

} // namespace dunkman
