#include "world/projectile.h"

#include <gmock/gmock.h>

#include "base/fatal.h"
#include "base/frame_state_writer.h"
#include "render/image_table.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/pineapple.h"
#include "world/player.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

class ProjectileTest : public WorldFixture {};

TEST_F(ProjectileTest, FallsFreelyAndWithoutDragUnlessToldOtherwise) {
    const Projectile projectile;
    EXPECT_EQ(projectile.acceleration, (Vec2{0.0, -9.81}));
    EXPECT_EQ(projectile.friction, (Vec2{0.0, 0.0}));
    EXPECT_EQ(projectile.damage, 0); // what it takes is its weapon's
}

TEST_F(ProjectileTest, ARangedWeaponIsHeldAndThrownByItsMiddleTwiceAsHighAsFar) {
    const RangedWeapon weapon;
    EXPECT_EQ(weapon.handPivot, (Vec2{0.5, 0.5}));
    EXPECT_EQ(weapon.collisionPivot, (Vec2{0.5, 0.5}));
    EXPECT_EQ(weapon.initialVelocity, (Vec2{3.0, 6.0}));
    EXPECT_LT(weapon.durability, 0); // never wears out
}

TEST_F(ProjectileTest, APineappleIsAsWideAsItsPictureIsForItsHeightAndHeldLow) {
    const Pineapple pineapple;
    EXPECT_EQ(pineapple.texture.name, pictures.imageTable.at("pineapple").name);
    EXPECT_EQ(pineapple.size, (Vec2{0.4, 0.8})); // the picture is 40 x 80
    EXPECT_EQ(pineapple.handPivot, (Vec2{0.5, 0.25}));
    EXPECT_EQ(pineapple.collisionPivot, (Vec2{0.5, 0.5}));
}

TEST_F(ProjectileTest, APineappleIsLiftedAQuarterTurnForAFifthOfASecondAndReadyEachSecond) {
    const Pineapple pineapple;
    EXPECT_EQ(pineapple.attackArc, (Vec2{0.0, -90.0}));
    EXPECT_EQ(pineapple.timeoutAnimationPercentage * pineapple.attackTimeout.duration, 0.2);
    EXPECT_EQ(pineapple.attackTimeout.duration, 1.0);
    EXPECT_FALSE(pineapple.attackTimeout.running); // ready at once
}

TEST_F(ProjectileTest, RangedWeaponsReadTheirLaunchVelocity) {
    Pineapple pineapple;
    pineapple.readProperties(json("{initialVelocity: [1, 2.5], damage: 4}"));
    EXPECT_EQ(pineapple.initialVelocity, (Vec2{1.0, 2.5}));
    EXPECT_EQ(pineapple.damage, 4);
}

TEST_F(ProjectileTest, AThrowCopiesTheLooksOfTheWeapon) {
    add<Player>();
    Pineapple pineapple;
    pineapple.damage = 3;
    pineapple.autoMirror = true;
    pineapple.inverseMirror = true;
    pineapple.size = {9.0, 0.8};
    pineapple.attack({5.0, 0.5}, {6.0, 2.0}, false);
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
    world.applyPending();
    const Projectile* thrown = world.first<Projectile>();
    ASSERT_NE(thrown, nullptr);
    EXPECT_EQ(thrown->texture.name, pineapple.texture.name);
    EXPECT_TRUE(thrown->autoMirror);
    EXPECT_TRUE(thrown->inverseMirror);
    EXPECT_EQ(thrown->size, (Vec2{0.4, 0.8}));
    EXPECT_EQ(thrown->damage, 3);
    EXPECT_EQ(thrown->velocity, (Vec2{3.0, 6.0}));
    EXPECT_EQ(thrown->position, (Vec2{6.0, 2.0}));
    EXPECT_EQ(thrown->groundY, 0.5);
    EXPECT_EQ(thrown->angle, 0.0);
}

TEST_F(ProjectileTest, AMirroredThrowGoesTheOtherWay) {
    add<Player>();
    Pineapple pineapple;
    pineapple.attack({}, {}, true);
    world.applyPending();
    EXPECT_EQ(world.first<Projectile>()->velocity, (Vec2{-3.0, 6.0}));
}

TEST_F(ProjectileTest, AThrowTakesItsDepthFromTheHeroesHand) {
    Player& player = add<Player>({2.0, 1.0});
    player.handY = 1.9;
    Pineapple pineapple;
    pineapple.attack({}, {}, false);
    world.applyPending();
    EXPECT_EQ(world.first<Projectile>()->zOffset, 1.0 - 1.9 - 0.01 + 3.0);
}

TEST_F(ProjectileTest, AThrowWithoutAHeroStopsTheGame) {
    Pineapple pineapple;
    pineapple.position = {4.0, 5.0};
    try {
        pineapple.attack({}, {}, false);
        FAIL() << "the game went on";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("Pineapple at (4, 5)"));
    }
}

TEST_F(ProjectileTest, FallsThenMovesThenSpins) {
    writable::frameState.frameDelta = 0.1;
    Projectile& projectile = add<Projectile>({0.0, 5.0});
    projectile.velocity = {3.0, 6.0};
    projectile.update();
    const double fallen = 6.0 + -9.81 * 0.1;
    EXPECT_EQ(projectile.velocity, (Vec2{3.0, fallen}));
    EXPECT_EQ(projectile.position, (Vec2{0.0 + 3.0 * 0.1, 5.0 + fallen * 0.1}));
    EXPECT_EQ(projectile.angle, 10.0);
}

TEST_F(ProjectileTest, SpinReversedTurnsTheOtherWay) {
    writable::frameState.frameDelta = 0.1;
    Projectile& projectile = add<Projectile>({0.0, 5.0});
    projectile.spinReversed = true;
    projectile.update();
    EXPECT_EQ(projectile.angle, -10.0);
}

TEST_F(ProjectileTest, ComesBackToItsHeightAfterTwiceTheRise) {
    Projectile& projectile = add<Projectile>({0.0, 5.0});
    projectile.velocity = {3.0, 6.0};
    int steps = 0;
    do {
        step();
        ++steps;
    } while (projectile.position.y >= 5.0);
    EXPECT_NEAR(steps * sixtieth, 2.0 * 6.0 / 9.81, 0.02);
    EXPECT_NEAR(projectile.position.x, 3.7, 0.1);
}

TEST_F(ProjectileTest, FromASceneItGoesAsSoonAsItIsBelowMinusOne) {
    Projectile& projectile = add<Projectile>({0.0, -1.0});
    projectile.acceleration = {0.0, 0.0};
    step();
    EXPECT_EQ(count(ObjectType::Projectile), 1u); // on the line is not below it
    projectile.velocity.y = -0.001;
    step();
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
}

TEST_F(ProjectileTest, BelowItsGroundItHurtsNobody) {
    Zombie& zombie = add<Zombie>({0.0, -2.0});
    Projectile& projectile = add<Projectile>({0.0, -1.5});
    projectile.damage = 1;
    projectile.update();
    EXPECT_EQ(zombie.health, 2);
}

TEST_F(ProjectileTest, HurtsEveryZombieItOverlapsAndIsUsedUpOnce) {
    Zombie& first = add<Zombie>({0.0, 0.0});
    Zombie& second = add<Zombie>({0.3, 0.0});
    Zombie& distant = add<Zombie>({5.0, 0.0});
    Projectile& projectile = add<Projectile>({0.0, 1.0});
    projectile.damage = 1;
    projectile.update();
    EXPECT_EQ(first.health, 1);
    EXPECT_EQ(second.health, 1);
    EXPECT_EQ(distant.health, 2);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
}

TEST_F(ProjectileTest, TouchingEdgesDoNotOverlap) {
    Zombie& zombie = add<Zombie>();
    zombie.size = {2.0, 2.0}; // from (-1, 0) to (1, 2)
    Projectile& projectile = add<Projectile>({1.5, 1.0});
    projectile.acceleration = {0.0, 0.0};
    projectile.damage = 1;
    projectile.update(); // from 1 on
    EXPECT_EQ(zombie.health, 2);
    projectile.position.x = 1.4999;
    projectile.update();
    EXPECT_EQ(zombie.health, 1);
}

TEST_F(ProjectileTest, IsUsedUpByAnInvulnerableZombieToo) {
    Zombie& zombie = add<Zombie>();
    zombie.invulnerableTimer.running = true;
    Projectile& projectile = add<Projectile>({0.0, 1.0});
    projectile.damage = 1;
    projectile.update();
    world.applyPending();
    EXPECT_EQ(zombie.health, 2);
    EXPECT_EQ(count(ObjectType::Projectile), 0u);
}

TEST_F(ProjectileTest, ALargeStepMayCarryItThroughAZombie) {
    add<Zombie>({5.0, 0.0});
    Projectile& projectile = add<Projectile>({0.0, 5.0});
    projectile.acceleration = {0.0, 0.0};
    projectile.velocity = {10.0, -3.0};
    writable::frameState.frameDelta = 1.0;
    projectile.update();
    EXPECT_EQ(world.first<Zombie>()->health, 2);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Projectile), 1u);
}

TEST_F(ProjectileTest, IsDrawnAtItsSpinAngleWithoutItsTilt) {
    Projectile projectile;
    projectile.useImage("pineapple");
    projectile.tilt = 45.0;
    projectile.angle = 12.0;
    projectile.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].angle, 12.0);
    EXPECT_EQ(drawnSprites[0].scale, (Vec2{1.0, 1.0}));
}

TEST_F(ProjectileTest, SavesTheMovableKeysOnly) {
    const Projectile projectile;
    const Movable movable;
    EXPECT_EQ(projectile.writeProperties().objectValue().size(),
              movable.writeProperties().objectValue().size());
    EXPECT_EQ(projectile.writeProperties().get("_type").stringValue(), "Projectile");
}

} // namespace

} // namespace dunkman
