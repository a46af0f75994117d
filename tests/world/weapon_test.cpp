#include "world/weapon.h"

#include <cmath>

#include "base/frame_state_writer.h"
#include "render/image_table.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/flamingo.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

class WeaponTest : public WorldFixture {
protected:
    Weapon weapon;
};

TEST_F(WeaponTest, NeverWearsOutAndTakesOneHealthWithEachStrike) {
    EXPECT_LT(weapon.durability, 0);
    EXPECT_EQ(weapon.damage, 1);
}

TEST_F(WeaponTest, IsHeldByItsFootAndStrikesWithItsHead) {
    EXPECT_EQ(weapon.handPivot, (Vec2{0.5, 0.0}));
    EXPECT_EQ(weapon.collisionPivot, (Vec2{0.5, 1.0}));
    EXPECT_EQ(weapon.collisionRadius, 0.1);
}

TEST_F(WeaponTest, SwingsForwardAndFurtherBackInHalfOfItsPause) {
    EXPECT_EQ(weapon.attackArc, (Vec2{15.0, 45.0}));
    EXPECT_EQ(weapon.timeoutAnimationPercentage, 0.5);
    EXPECT_EQ(weapon.attackTimeout.duration, 0.4);
    EXPECT_FALSE(weapon.attackTimeout.running); // ready at once
}

TEST_F(WeaponTest, ReadsHowItStrikesFromAScene) {
    weapon.attackTimeout = {0.4, true, 0.2};
    weapon.readProperties(
        json("{attackTimeout: 2, timeoutAnimationPercentage: 0.25, attackArc: [1, 2],"
             " handPivot: 0.5, animationAngle: 3, collisionPivot: [0, 1.0], collisionRadius: 4,"
             " damage: 5, durability: 6, velocity: 7}"));
    EXPECT_EQ(weapon.attackTimeout.duration, 2.0);
    EXPECT_FALSE(weapon.attackTimeout.running);
    EXPECT_EQ(weapon.attackTimeout.elapsed, 0.0);
    EXPECT_EQ(weapon.timeoutAnimationPercentage, 0.25);
    EXPECT_EQ(weapon.attackArc, (Vec2{1.0, 2.0}));
    EXPECT_EQ(weapon.handPivot, (Vec2{0.5, 0.5}));
    EXPECT_EQ(weapon.animationAngle, 3.0);
    EXPECT_EQ(weapon.collisionPivot, (Vec2{0.0, 1.0}));
    EXPECT_EQ(weapon.collisionRadius, 4.0);
    EXPECT_EQ(weapon.damage, 5);
    EXPECT_EQ(weapon.durability, 6);
    EXPECT_EQ(weapon.velocity, (Vec2{7.0, 7.0}));
}

TEST_F(WeaponTest, AFlamingoIsBuiltForItsPicture) {
    const Flamingo flamingo;
    EXPECT_EQ(flamingo.size, (Vec2{0.6, 1.2})); // the picture is 60 x 120
    EXPECT_EQ(flamingo.texture.name, pictures.imageTable.at("flamingo").name);
    EXPECT_EQ(flamingo.imageKey, "");
    EXPECT_TRUE(flamingo.autoMirror);
    EXPECT_TRUE(flamingo.inverseMirror);
    EXPECT_EQ(flamingo.durability, -1);
    EXPECT_EQ(flamingo.getType(), ObjectType::Flamingo);
}

TEST_F(WeaponTest, DurabilityGivenAsAFloatIsIgnored) {
    Flamingo flamingo;
    flamingo.readProperties(json("{durability: 3.0, damage: 2.0}"));
    EXPECT_EQ(flamingo.durability, -1);
    EXPECT_EQ(flamingo.damage, 1);
}

// A zombie whose body is the rectangle from (9, 0) to (11, 4).
class MeleeTest : public WeaponTest {
protected:
    MeleeTest() : zombie(add<Zombie>({10.0, 0.0})) {
        zombie.size = {2.0, 4.0};
        zombie.health = 10;
    }
    bool hits(Vec2 strike) {
        zombie.invulnerableTimer.running = false;
        const std::int32_t before = zombie.health;
        weapon.attack({-100.0, -100.0}, strike, false);
        return zombie.health < before;
    }
    Zombie& zombie;
};

TEST_F(MeleeTest, AStrikeInsideTheBodyAlwaysHits) {
    weapon.collisionRadius = 1e-9;
    EXPECT_TRUE(hits({10.0, 2.0}));
    EXPECT_TRUE(hits({9.01, 3.99}));
}

TEST_F(MeleeTest, ARadiusOfNothingNeverHits) {
    weapon.collisionRadius = 0.0;
    EXPECT_FALSE(hits({10.0, 2.0}));
}

TEST_F(MeleeTest, AStrikeExactlyARadiusAwayMisses) {
    weapon.collisionRadius = 0.5;
    EXPECT_FALSE(hits({11.5, 2.0}));
    EXPECT_TRUE(hits({11.4999, 2.0}));
    EXPECT_FALSE(hits({8.5, 2.0}));
    EXPECT_FALSE(hits({10.0, 4.5}));
    EXPECT_FALSE(hits({10.0, -0.5}));
}

TEST_F(MeleeTest, ReachRoundsTheCornersOfTheBody) {
    weapon.collisionRadius = 0.5;
    EXPECT_FALSE(hits({11.3, 4.4})); // 0.3 and 0.4 away: exactly the radius
    EXPECT_TRUE(hits({11.29, 4.4}));
    EXPECT_FALSE(hits({11.45, 4.45}));
}

TEST_F(MeleeTest, OneAttackHurtsEveryZombieInReachByItsDamage) {
    Zombie& second = add<Zombie>({10.5, 0.0});
    Zombie& distant = add<Zombie>({20.0, 0.0});
    second.health = distant.health = 10;
    weapon.damage = 3;
    EXPECT_TRUE(hits({10.0, 1.0}));
    EXPECT_EQ(zombie.health, 7);
    EXPECT_EQ(second.health, 7);
    EXPECT_EQ(distant.health, 10);
}

TEST_F(MeleeTest, AnAttackLeavesTimerDurabilityAndVictimsMotionAlone) {
    weapon.durability = 3;
    zombie.velocity = {1.0, 1.0};
    EXPECT_TRUE(hits({10.0, 2.0}));
    EXPECT_EQ(weapon.durability, 3);
    EXPECT_FALSE(weapon.attackTimeout.running);
    EXPECT_EQ(zombie.velocity, (Vec2{1.0, 1.0}));
}

TEST_F(WeaponTest, WobblesAboutItsTilt) {
    weapon.useImage("box");
    weapon.tilt = 20.0;
    writable::frameState.elapsedTime = 0.05;
    weapon.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_NEAR(drawnSprites[0].angle, std::sin(0.5) * 4.0 + 20.0, 1e-12);
    EXPECT_EQ(drawnSprites[0].scale, (Vec2{1.0, 1.0}));
}

TEST_F(WeaponTest, PulsesAndWobblesTwiceAsFarWhenHighlighted) {
    weapon.useImage("box");
    weapon.highlighted = true;
    writable::frameState.elapsedTime = 0.05;
    weapon.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_NEAR(drawnSprites[0].angle, std::sin(0.5) * 8.0, 1e-12);
    EXPECT_NEAR(drawnSprites[0].scale.x, 1.0 + std::sin(0.4) * 0.2, 1e-12);
    EXPECT_EQ(drawnSprites[0].scale.x, drawnSprites[0].scale.y);
}

TEST_F(WeaponTest, TheHighlightLastsForOneDrawing) {
    weapon.useImage("box");
    weapon.highlighted = true;
    writable::frameState.elapsedTime = 0.05;
    weapon.draw();
    EXPECT_FALSE(weapon.highlighted);
    weapon.draw();
    EXPECT_NE(drawnSprites[0].scale, (Vec2{1.0, 1.0}));
    EXPECT_EQ(drawnSprites[1].scale, (Vec2{1.0, 1.0}));
}

TEST_F(WeaponTest, TheTimerOfAWeaponOnTheGroundStands) {
    Weapon& lying = add<Weapon>();
    lying.attackTimeout = {0.4, true, 0.1};
    step(10);
    EXPECT_EQ(lying.attackTimeout.elapsed, 0.1);
    EXPECT_TRUE(lying.attackTimeout.running);
}

} // namespace

} // namespace dunkman
