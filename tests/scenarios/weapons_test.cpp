#include "tests/scenarios/play.h"

#include <algorithm>

#include <gtest/gtest.h>

// Zombies with a search radius of -1 never notice the hero and stand still.
namespace dunkman {

namespace {

// A hero with the weapon in hand.
class ArmedPlay : public Play {
public:
    explicit ArmedPlay(const std::string& weapon, const std::string& scene = "")
        : Play(R"({"recipe": ")" + weapon + R"(", "position": [0, 0.8]},)" + scene) {
        tap(keys::z);
    }

    bool isSwinging() const { return hero().heldWeapon && hero().heldWeapon->attackTimeout.running; }
    void swingAndWait() {
        tap(keys::x);
        until("the swing is over", [this] { return !isSwinging(); });
    }
};

TEST(Weapons, TheFlamingoShinesWhenTheHeroStandsByItAndGoesIntoHisHandOnZ) {
    Play play(R"({"recipe": "flamingo", "position": [4, 0.8]})");
    play.step();
    EXPECT_NE(play.lineOf("Flamingo").find("highlighted=0"), std::string::npos);
    play.walkTo(3.0);
    EXPECT_NE(play.lineOf("Flamingo").find("highlighted=1"), std::string::npos);
    EXPECT_FALSE(play.isArmed());

    play.hold(keys::z).step();
    ASSERT_TRUE(play.isArmed());
    EXPECT_EQ(play.count(ObjectType::Flamingo), 0u);
    EXPECT_EQ(play.hero().texture.name, play.hero().armedImage.name);
    EXPECT_NE(play.worldLines().find("\nheld Flamingo "), std::string::npos);
}

TEST(Weapons, OutOfReachZPicksUpNothing) {
    Play play(R"({"recipe": "flamingo", "position": [4, 0.8]})");
    play.tap(keys::z);
    EXPECT_FALSE(play.isArmed());
    EXPECT_EQ(play.count(ObjectType::Flamingo), 1u);
}

TEST(Weapons, ASwingGoesForwardThenBackAndMissesWhoIsOutOfReach) {
    ArmedPlay play("flamingo", R"({"recipe": "zombie", "position": [5, 0], "searchRadius": -1})");
    double forward = 0.0;
    double back = 0.0;
    play.hold(keys::x).step();
    ASSERT_TRUE(play.isSwinging());
    const int steps = play.until("the swing is over", [&] {
        forward = std::max(forward, play.hero().heldWeapon->animationAngle);
        back = std::min(back, play.hero().heldWeapon->animationAngle);
        return !play.isSwinging();
    });
    EXPECT_EQ(steps, stepsOf(0.4));
    EXPECT_NEAR(forward, 15.0, 1.0);
    EXPECT_NEAR(back, -45.0, 1.0);
    EXPECT_EQ(play.zombie().health, 1);
    EXPECT_FALSE(play.zombie().invulnerableTimer.running);
}

TEST(Weapons, OneSwingHitsTwoZombies) {
    ArmedPlay play("flamingo", R"({"recipe": "zombie", "position": [2, 0.2], "searchRadius": -1},
                                  {"recipe": "zombie", "position": [2.3, -0.2], "searchRadius": -1},
                                  {"recipe": "zombie", "position": [-2.3, 0], "searchRadius": -1})");
    play.tap(keys::x);
    EXPECT_EQ(play.zombie(0).health, 0);
    EXPECT_EQ(play.zombie(1).health, 0);
    EXPECT_EQ(play.zombie(2).health, 1); // behind his back
    play.turnLeft().until("the swing is over", [&] { return !play.isSwinging(); });
    play.tap(keys::x);
    EXPECT_EQ(play.zombie(2).health, 0);
}

TEST(Weapons, TheNextSwingHasToWaitForTheEndOfTheLast) {
    ArmedPlay play("flamingo");
    play.hero().heldWeapon->durability = 9; // counts the attacks
    play.tap(keys::x).tap(keys::x).tap(keys::space);
    EXPECT_EQ(play.hero().heldWeapon->durability, 8);
    play.until("the swing is over", [&] { return !play.isSwinging(); });
    play.tap(keys::space);
    EXPECT_EQ(play.hero().heldWeapon->durability, 7);
}

TEST(Weapons, HoldingTheKeySwingsOnce) {
    ArmedPlay play("flamingo");
    play.hero().heldWeapon->durability = 9;
    play.hold(keys::x).step(120);
    EXPECT_EQ(play.hero().heldWeapon->durability, 8);
}

// The two states are combined bit by bit, so held and released together read as pressed. Kept as it is.
TEST(Weapons, LettingGoOfOneAttackKeyWhileTheOtherIsHeldAttacks) {
    ArmedPlay play("flamingo");
    play.hero().heldWeapon->durability = 9;
    play.hold(keys::x).step(60).hold(keys::space).step(60);
    EXPECT_EQ(play.hero().heldWeapon->durability, 7);
    play.letGo(keys::space).step();
    EXPECT_EQ(play.hero().heldWeapon->durability, 6);
}

TEST(Weapons, AZombieOfHealthOneLivesThroughOneHitAndDiesOfTheSecond) {
    ArmedPlay play("flamingo", R"({"recipe": "zombie", "position": [2, 0], "searchRadius": -1})");
    play.swingAndWait();
    EXPECT_EQ(play.zombie().health, 0);
    play.swingAndWait(); // it still blinks from the first: no harm done
    EXPECT_EQ(play.zombie().health, 0);
    play.swingAndWait();
    EXPECT_EQ(play.count(ObjectType::Zombie), 0u);
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 1u);
}

TEST(Weapons, ACorpseFallsForASecondAndStays) {
    ArmedPlay play("sweeper", R"({"recipe": "weakZombie", "position": [2, 0.5], "searchRadius": -1})");
    play.hold(keys::x).step();
    const auto& corpse = *world.first<ZombieDead>();
    EXPECT_EQ(corpse.position, (Vec2{2.0, 0.5}));
    EXPECT_EQ(corpse.texture.name, corpse.frames[0].name);
    const int steps =
        play.until("the last picture", [&] { return corpse.texture.name == corpse.frames[3].name; });
    EXPECT_NEAR(steps, 60, 1);
    play.step(1200);
    EXPECT_EQ(play.count(ObjectType::ZombieDead), 1u);
    EXPECT_EQ(corpse.texture.name, corpse.frames[3].name);
    EXPECT_EQ(corpse.position, (Vec2{2.0, 0.5}));
}

TEST(Weapons, APineappleBreaksOnTheFifthThrowAndLeavesTheHeroUnarmed) {
    ArmedPlay play("pineapple");
    for (int thrown = 1; thrown <= 4; ++thrown) {
        play.swingAndWait();
        ASSERT_TRUE(play.isArmed()) << "after throw " << thrown;
        EXPECT_EQ(play.hero().heldWeapon->durability, 5 - thrown);
    }
    const std::size_t inFlight = play.count(ObjectType::Projectile);
    play.hold(keys::x).step();
    EXPECT_FALSE(play.isArmed());
    EXPECT_EQ(play.hero().texture.name, play.hero().unarmedImage.name);
    EXPECT_EQ(play.count(ObjectType::Projectile), inFlight + 1); // the fifth is thrown all the same
    play.letGo(keys::x).tap(keys::z).tap(keys::x);
    EXPECT_FALSE(play.isArmed());
    EXPECT_EQ(play.count(ObjectType::Pineapple), 0u);
}

TEST(Weapons, AThrownPineappleHitsInItsArcAndIsUsedUp) {
    ArmedPlay play("pineapple", R"({"recipe": "zombie", "position": [4.5, 0], "searchRadius": -1},
                                   {"recipe": "zombie", "position": [4.7, 0], "searchRadius": -1})");
    play.tap(keys::x);
    ASSERT_EQ(play.count(ObjectType::Projectile), 1u);
    play.until("the pineapple is gone", [&] { return play.count(ObjectType::Projectile) == 0; });
    EXPECT_EQ(play.zombie(0).health, 0);
    EXPECT_EQ(play.zombie(1).health, 0); // both are overlapped in the step of the hit
}

TEST(Weapons, AMissedThrowEndsAtTheThrowersFeet) {
    ArmedPlay play("pineapple");
    play.turnLeft().step(60);
    const double launch = play.hero().position.x;
    play.tap(keys::x);
    double lastX = 0.0;
    double lastY = 0.0;
    play.until("the pineapple is gone", [&] {
        if (play.count(ObjectType::Projectile) == 0) {
            return true;
        }
        const auto& projectile = *world.objectsOfType(ObjectType::Projectile).front();
        lastX = projectile.position.x;
        lastY = projectile.position.y;
        return false;
    });
    EXPECT_LT(lastX, launch - 3.0);
    EXPECT_GE(lastY, 0.0);
    EXPECT_LT(lastY, 0.15); // less than a step's fall above
}

TEST(Weapons, DropsOneWeaponAndTakesTheOtherInOneKeyPress) {
    Play play(
        R"({"recipe": "flamingo", "position": [0.1, 0.9]}, {"recipe": "pineapple", "position": [0.7, 0.9]})");
    play.tap(keys::z);
    ASSERT_TRUE(play.isArmed());
    EXPECT_EQ(play.hero().heldWeapon->getType(), ObjectType::Flamingo); // the nearer one
    play.hold(keys::z).step();
    ASSERT_TRUE(play.isArmed());
    EXPECT_EQ(play.hero().heldWeapon->getType(), ObjectType::Pineapple);
    EXPECT_EQ(play.hero().texture.name, play.hero().armedImage.name);
    ASSERT_EQ(play.count(ObjectType::Flamingo), 1u);
    EXPECT_EQ(play.count(ObjectType::Pineapple), 0u);
    // In front of his body's middle, half a unit down.
    EXPECT_EQ(world.first<Flamingo>()->position, (Vec2{0.0, 0.5}));
}

TEST(Weapons, WhatWasDroppedLiesThereAndCanBeTakenAgain) {
    ArmedPlay play("flamingo");
    play.hold(keys::z).step();
    EXPECT_FALSE(play.isArmed());
    EXPECT_EQ(play.hero().texture.name, play.hero().unarmedImage.name);
    EXPECT_EQ(play.count(ObjectType::Flamingo), 1u);
    play.letGo(keys::z).step(60);
    EXPECT_FALSE(play.isArmed());
    play.tap(keys::z);
    EXPECT_TRUE(play.isArmed());
}

} // namespace

} // namespace dunkman
