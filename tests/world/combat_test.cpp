#include "assets/catalog_writer.h"
#include "base/frame_state.h"
#include "base/key_states.h"
#include "tests/world/world_fixture.h"
#include "world/arena.h"
#include "world/camera.h"
#include "world/flamingo.h"
#include "world/pineapple.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

namespace {

// Whole steps of the world, as the game screen runs them.
class CombatTest : public WorldFixture {
protected:
    CombatTest() : player(add<Player>()) { add<Camera>(); }

    // Steps until the condition holds; answers how many steps that took, or -1.
    template <class Condition> static int stepsUntil(Condition&& condition, int limit = 2000) {
        for (int taken = 0; taken <= limit; ++taken) {
            if (condition()) {
                return taken;
            }
            step();
        }
        return -1;
    }

    Player& player;
};

TEST_F(CombatTest, TheHeroDiesOnTheSixthStrikeOnTheBeat) {
    add<Zombie>({0.94, 0.0});
    int lastHealth = player.health;
    std::vector<int> strikes;
    for (int taken = 1; player.health >= 0 && taken < 2000; ++taken) {
        step();
        if (player.health != lastHealth) {
            strikes.push_back(taken);
            lastHealth = player.health;
        }
    }
    // Arrival in step 1, the wind-up takes nineteen, and every pause 181 steps.
    EXPECT_EQ(strikes, (std::vector<int>{20, 201, 382, 563, 744, 925}));
    EXPECT_EQ(player.health, -1);
}

TEST_F(CombatTest, OneSwingHitsTwoZombies) {
    player.heldWeapon = makeObject<Flamingo>();
    Zombie& first = add<Zombie>({1.0, 0.0});
    Zombie& second = add<Zombie>({1.3, 0.2});
    Zombie& behind = add<Zombie>({-1.5, 0.0});
    press(keys::x);
    step();
    EXPECT_EQ(first.health, 1);
    EXPECT_EQ(second.health, 1);
    EXPECT_EQ(behind.health, 2);
}

TEST_F(CombatTest, AZombieDiesOfThreeSwingsAndLeavesOneCorpse) {
    player.heldWeapon = makeObject<Flamingo>();
    add<Zombie>({1.1, 0.0});
    int swings = 0;
    while (count(ObjectType::Zombie) == 1 && swings < 10) {
        press(keys::x);
        step();
        ++swings;
        step(35); // longer than the weapon's pause and the zombie's protection
    }
    EXPECT_EQ(swings, 3);
    EXPECT_EQ(count(ObjectType::ZombieDead), 1u);
}

TEST_F(CombatTest, ASwingAndAProjectileInOneStepLeaveTwoCorpses) {
    player.heldWeapon = makeObject<Flamingo>();
    Zombie& zombie = add<Zombie>({1.1, 0.0});
    zombie.health = 0;
    add<Projectile>({1.1, 1.0}).damage = 1;
    press(keys::x);
    step();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    EXPECT_EQ(count(ObjectType::ZombieDead), 2u);
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
}

TEST_F(CombatTest, TwoProjectilesInOneStepLeaveTwoCorpses) {
    add<Zombie>({3.0, 0.0}).health = 0;
    add<Projectile>({3.0, 1.0}).damage = 1;
    add<Projectile>({3.1, 1.0}).damage = 1;
    step();
    EXPECT_EQ(count(ObjectType::ZombieDead), 2u);
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
}

TEST_F(CombatTest, AZombieKilledByAProjectileMayStrikeInThatStep) {
    Zombie& zombie = add<Zombie>({0.94, 0.0});
    zombie.health = 0;
    zombie.attackArmed = true;
    add<Projectile>({0.94, 1.5}).damage = 1;
    step();
    EXPECT_EQ(player.health, 4);
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
}

TEST_F(CombatTest, AThrownPineappleFliesAndHurts) {
    player.heldWeapon = makeObject<Pineapple>();
    Zombie& zombie = add<Zombie>({3.6, 0.0});
    zombie.searchRadius = 0.0; // stands
    press(keys::space);
    step();
    EXPECT_EQ(count(ObjectType::Projectile), 1u);
    const int flight = stepsUntil([&] { return count(ObjectType::Projectile) == 0; });
    EXPECT_GT(flight, 30);
    EXPECT_LT(flight, 90);
    EXPECT_EQ(zombie.health, 1);
}

TEST_F(CombatTest, AMissedPineappleIsGoneBelowTheThrowersFeet) {
    player.heldWeapon = makeObject<Pineapple>();
    player.position.y = 1.0;
    press(keys::space);
    step();
    double lowest = 100.0;
    const int flight = stepsUntil([&] {
        if (const Projectile* projectile = world.first<Projectile>()) {
            lowest = projectile->position.y;
            return false;
        }
        return true;
    });
    EXPECT_GT(flight, 0);
    EXPECT_GE(lowest, 1.0);
}

TEST_F(CombatTest, WalksPicksUpHitsAndDrops) {
    Flamingo& flamingo = add<Flamingo>({3.0, 1.0});
    hold(keys::d);
    EXPECT_GT(stepsUntil([&] { return flamingo.highlighted; }), 0);
    release(keys::d);
    press(keys::z);
    step();
    EXPECT_EQ(player.heldWeapon.get(), &flamingo);
    step(30);
    press(keys::enter);
    step();
    EXPECT_EQ(player.heldWeapon, nullptr);
    EXPECT_EQ(count(ObjectType::Flamingo), 1u);
}

TEST_F(CombatTest, ThreeArenasInARowFireOneAfterAnother) {
    writable::assetCatalog.recipes =
        json("{zombie: {_type: 'Zombie', health: 0, attackDelay: 1000}}").objectValue();
    for (const double x : {2.0, 30.0, 60.0}) {
        add<Arena>({x, 0.0}).readProperties(json("{spawnsRemaining: 2, zombieTimer: 0.1}"));
    }
    player.heldWeapon = makeObject<Flamingo>();
    player.heldWeapon->collisionRadius = 50.0;
    player.health = 1000;
    std::vector<double> held;
    const Camera& camera = *world.first<Camera>();
    hold(keys::d);
    stepsUntil(
        [&] {
            if (camera.target != nullptr && (held.empty() || held.back() != camera.target->position.x)) {
                held.push_back(camera.target->position.x);
            }
            if (count(ObjectType::Zombie) > 0) {
                press(keys::x);
            }
            return count(ObjectType::Arena) == 0;
        },
        8000);
    EXPECT_EQ(count(ObjectType::Arena), 0u);
    EXPECT_EQ(held, (std::vector<double>{2.0, 30.0, 60.0}));
    EXPECT_EQ(count(ObjectType::ZombieDead), 6u);
    EXPECT_EQ(camera.target, nullptr);
}

TEST_F(CombatTest, TheHeroesClampUsesTheCameraOfTheStepBefore) {
    Camera& camera = *world.first<Camera>();
    OwnedObject anchor = createObject(ObjectType::Object);
    anchor->position = {99.5, 0.0}; // its centre is at 100
    camera.target = anchor.get();
    camera.position.x = 0.0;
    player.position.x = 8.0;
    step();
    EXPECT_EQ(player.position.x, 5.5); // 0 + 9 - 3.5, though the camera has moved on in this step
    EXPECT_GT(camera.position.x, 0.0);
}

} // namespace

} // namespace dunkman
