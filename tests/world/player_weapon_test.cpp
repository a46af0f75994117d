#include <gmock/gmock.h>

#include "base/frame_state.h"
#include "base/key_states_writer.h"
#include "render/image_table.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/flamingo.h"
#include "world/pineapple.h"
#include "world/player.h"
#include "world/projectile.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr double poseTolerance = 1e-12; // against numbers reckoned elsewhere with another sine

// The hero stands at the origin; his body reaches from (-0.4, 0) to (0.4, 2), his reach point is (0, 1).
class PlayerWeaponTest : public WorldFixture {
protected:
    PlayerWeaponTest() : player(add<Player>()) {}

    template <class Kind> Kind& arm() {
        player.heldWeapon = makeObject<Kind>();
        player.texture = player.armedImage;
        return static_cast<Kind&>(*player.heldWeapon);
    }

    void expectPose(double animationAngle, double handX, double handY, double handAngle, double strikeX,
                    double strikeY) const {
        EXPECT_NEAR(player.heldWeapon->animationAngle, animationAngle, poseTolerance);
        EXPECT_NEAR(player.handX, handX, poseTolerance);
        EXPECT_NEAR(player.handY, handY, poseTolerance);
        EXPECT_NEAR(player.handAngle, handAngle, poseTolerance);
        EXPECT_NEAR(player.strikeX, strikeX, poseTolerance);
        EXPECT_NEAR(player.strikeY, strikeY, poseTolerance);
    }

    Player& player;
};

TEST_F(PlayerWeaponTest, RestingWeaponStandsAtHalfARightAngle) {
    arm<Flamingo>();
    player.update();
    expectPose(0.0, 0.3, 0.9, -45.0, 1.148528137423901, 1.748528137423813);
}

TEST_F(PlayerWeaponTest, FirstHalfOfATwoPartArcSwingsForward) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackTimeout = {0.4, true, 0.05}; // a quarter of the swing
    player.update();
    expectPose(15.0, 0.3, 0.9, -37.5, 1.030513714810506, 1.8520240083494506);
}

TEST_F(PlayerWeaponTest, SecondHalfSwingsBackAndMirroringTurnsItRound) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackTimeout = {0.4, true, 0.15}; // three quarters
    weapon.collisionPivot = {0.75, 1.0};
    player.position = {1.0, 0.5};
    player.mirrorX = true;
    player.update();
    expectPose(-45.0, 0.7, 1.4, 67.5, -0.4660579538683325, 1.7206381889613243);
}

TEST_F(PlayerWeaponTest, ForwardOnlyArcTakesHalfATurn) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackArc = {15.0, 0.0};
    weapon.attackTimeout = {0.4, true, 0.1}; // the middle of the swing
    player.update();
    EXPECT_NEAR(weapon.animationAngle, 15.0, poseTolerance);
}

TEST_F(PlayerWeaponTest, BackOnlyArcLiftsThePineapple) {
    Weapon& weapon = arm<Pineapple>();
    weapon.attackTimeout = {1.0, true, 0.1};
    player.update();
    expectPose(90.0, 0.3, 0.9, 0.0, 0.3, 1.1);
}

TEST_F(PlayerWeaponTest, TheSwingTakesItsShareOfThePause) {
    Weapon& weapon = arm<Pineapple>();
    weapon.attackTimeout = {1.0, true, 0.5}; // the swing was over at 0.2
    player.mirrorX = true;
    player.update();
    expectPose(0.0, -0.3, 0.9, 45.0, -0.4414213562373169, 1.0414213562373023);
}

TEST_F(PlayerWeaponTest, APauseOfNothingLeavesTheWeaponAtRest) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackTimeout.duration = 0.0; // 0 / 0
    player.update();
    EXPECT_EQ(weapon.animationAngle, 0.0);
    EXPECT_EQ(player.handAngle, -45.0);
}

TEST_F(PlayerWeaponTest, TheAngleComesFromTheTimeBeforeTheTimerAdvances) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackTimeout = {0.4, true, 0.0};
    player.update();
    EXPECT_EQ(weapon.animationAngle, 0.0);
    EXPECT_EQ(weapon.attackTimeout.elapsed, sixtieth);
}

TEST_F(PlayerWeaponTest, AttackingStartsTheTimerAndStrikesAtTheStrikePoint) {
    Weapon& weapon = arm<Flamingo>();
    Zombie& zombie = add<Zombie>({1.1485, 0.0}); // around the resting strike point
    press(keys::x);
    player.update();
    EXPECT_TRUE(weapon.attackTimeout.running);
    EXPECT_EQ(weapon.attackTimeout.elapsed, 0.0);
    EXPECT_EQ(zombie.health, 1);
    EXPECT_EQ(weapon.durability, -1);
}

TEST_F(PlayerWeaponTest, NoAttackWhileTheTimerRuns) {
    arm<Flamingo>().attackTimeout.running = true;
    Zombie& zombie = add<Zombie>({1.1, 0.0});
    press(keys::space);
    player.update();
    EXPECT_EQ(zombie.health, 2);
}

TEST_F(PlayerWeaponTest, AnAttackIsPossibleInTheStepInWhichTheTimerEnds) {
    Weapon& weapon = arm<Flamingo>();
    weapon.attackTimeout = {0.4, true, 0.39};
    Zombie& zombie = add<Zombie>({1.1485, 0.0});
    press(keys::x);
    player.update();
    EXPECT_EQ(zombie.health, 1);
    EXPECT_TRUE(weapon.attackTimeout.running);
    EXPECT_EQ(weapon.attackTimeout.elapsed, 0.0);
}

TEST_F(PlayerWeaponTest, AnAttackSkipsThePickupSearchAlsoWhileTheTimerRuns) {
    Weapon& weapon = arm<Flamingo>();
    Flamingo& lying = add<Flamingo>({0.0, 1.0});
    press(keys::x);
    player.update();
    EXPECT_FALSE(lying.highlighted);
    EXPECT_TRUE(weapon.attackTimeout.running);
    player.update();
    EXPECT_FALSE(lying.highlighted);
}

TEST_F(PlayerWeaponTest, AHeldAttackKeyWithTheOtherJustReleasedCounts) {
    Weapon& weapon = arm<Flamingo>();
    hold(keys::x);
    player.update();
    EXPECT_FALSE(weapon.attackTimeout.running);
    keyState(keys::space) = KeyState::Released;
    player.update();
    EXPECT_TRUE(weapon.attackTimeout.running);
}

TEST_F(PlayerWeaponTest, UnarmedTheAttackKeyDoesNothing) {
    Flamingo& lying = add<Flamingo>({0.0, 1.0});
    press(keys::x);
    player.update();
    EXPECT_TRUE(lying.highlighted);
    EXPECT_EQ(player.heldWeapon, nullptr);
}

TEST_F(PlayerWeaponTest, DurabilityOneBreaksAfterItsAttack) {
    arm<Flamingo>().durability = 1;
    Zombie& zombie = add<Zombie>({1.1485, 0.0});
    const Vec2 sizeBefore = player.size;
    press(keys::x);
    player.update();
    EXPECT_EQ(zombie.health, 1);
    EXPECT_EQ(player.heldWeapon, nullptr);
    EXPECT_EQ(player.texture.name, player.unarmedImage.name);
    EXPECT_EQ(player.size, sizeBefore);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(PlayerWeaponTest, DurabilityNoughtFromDataBecomesUnbreakable) {
    Weapon& weapon = arm<Flamingo>();
    weapon.durability = 0;
    press(keys::x);
    player.update();
    ASSERT_NE(player.heldWeapon, nullptr);
    EXPECT_EQ(weapon.durability, -1);
}

TEST_F(PlayerWeaponTest, NegativeDurabilityNeverWears) {
    Weapon& weapon = arm<Flamingo>();
    weapon.durability = -7;
    press(keys::x);
    player.update();
    EXPECT_EQ(weapon.durability, -7);
}

TEST_F(PlayerWeaponTest, APineappleBreaksWithItsFifthThrow) {
    arm<Pineapple>();
    for (int thrown = 1; thrown <= 5; ++thrown) {
        ASSERT_NE(player.heldWeapon, nullptr);
        player.heldWeapon->attackTimeout.running = false;
        player.heldWeapon->attackTimeout.elapsed = 0.0;
        press(keys::x);
        player.update();
        world.applyPending();
        EXPECT_EQ(count(ObjectType::Projectile), static_cast<std::size_t>(thrown));
    }
    EXPECT_EQ(player.heldWeapon, nullptr);
}

TEST_F(PlayerWeaponTest, AThrowStartsAtTheStrikePointAndMovesFromTheNextStepOn) {
    arm<Pineapple>();
    press(keys::x);
    player.update();
    world.applyPending();
    const Projectile* thrown = world.first<Projectile>();
    ASSERT_NE(thrown, nullptr);
    EXPECT_EQ(thrown->position, (Vec2{player.strikeX, player.strikeY}));
    EXPECT_EQ(thrown->groundY, 0.0);
    EXPECT_EQ(thrown->zOffset, 0.0 - player.handY - 0.01 + 3.0);
    EXPECT_EQ(thrown->velocity, (Vec2{3.0, 6.0}));
}

TEST_F(PlayerWeaponTest, HighlightsTheItemItWouldTake) {
    Flamingo& lying = add<Flamingo>({0.0, 1.0});
    player.update();
    EXPECT_TRUE(lying.highlighted);
    EXPECT_EQ(player.heldWeapon, nullptr);
}

TEST_F(PlayerWeaponTest, TakesTheItemWhenThePickUpKeyGoesDown) {
    for (const std::int32_t key : {keys::z, keys::enter}) {
        Flamingo& lying = add<Flamingo>({0.0, 1.0});
        press(key);
        player.update();
        EXPECT_EQ(player.heldWeapon.get(), &lying);
        EXPECT_EQ(player.texture.name, player.armedImage.name);
        EXPECT_EQ(player.size, (Vec2{0.8, 2.0}));
        EXPECT_NEAR(player.handAngle, -45.0, poseTolerance); // posed at once
        world.applyPending();
        EXPECT_EQ(count(ObjectType::Flamingo), 0u);
        release(key);
        player.heldWeapon.reset();
    }
}

TEST_F(PlayerWeaponTest, AHeldPickUpKeyTakesNothing) {
    add<Flamingo>({0.0, 1.0});
    hold(keys::z);
    player.update();
    EXPECT_EQ(player.heldWeapon, nullptr);
}

TEST_F(PlayerWeaponTest, TakesTheNearestItemCountedAlongTheAxes) {
    Flamingo& diagonal = add<Flamingo>({0.4, 1.4}); // 0.8 away
    Flamingo& beside = add<Flamingo>({0.69, 1.0});  // 0.69 away
    player.update();
    EXPECT_FALSE(diagonal.highlighted);
    EXPECT_TRUE(beside.highlighted);
}

TEST_F(PlayerWeaponTest, ATieGoesToTheEarlierItem) {
    Flamingo& first = add<Flamingo>({0.25, 1.0});
    Flamingo& second = add<Flamingo>({-0.25, 1.0});
    player.update();
    EXPECT_TRUE(first.highlighted);
    EXPECT_FALSE(second.highlighted);
}

TEST_F(PlayerWeaponTest, MirroredItReachesBeyondItsBack) {
    Flamingo& ahead = add<Flamingo>({-0.5, 1.0});
    Flamingo& centre = add<Flamingo>({0.0, 1.0});
    player.mirrorX = true; // the reach point is (-0.8, 1)
    player.update();
    EXPECT_TRUE(ahead.highlighted);
    EXPECT_FALSE(centre.highlighted);
}

TEST_F(PlayerWeaponTest, OnlyOverlappingItemsCount) {
    Flamingo& touching = add<Flamingo>({0.7, 1.0});
    touching.size.x = 0.5;
    touching.position.x = 0.65; // from 0.4 on: edges touch
    player.update();
    EXPECT_FALSE(touching.highlighted);
    touching.position.x = 0.64;
    player.update();
    EXPECT_TRUE(touching.highlighted);
}

TEST_F(PlayerWeaponTest, APlainInteractableIsHighlightedAndNeverTaken) {
    Interactable& item = add<Interactable>({0.0, 1.0});
    player.update();
    EXPECT_TRUE(item.highlighted);
    press(keys::z);
    player.update();
    EXPECT_EQ(player.heldWeapon, nullptr);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Interactable), 1u);
}

TEST_F(PlayerWeaponTest, AnItemAlreadyOnItsWayOutIsNoCandidate) {
    Flamingo& first = add<Flamingo>({0.0, 1.0});
    Flamingo& second = add<Flamingo>({0.3, 1.0});
    Player& rival = add<Player>();
    press(keys::z);
    world.updateAll();
    EXPECT_EQ(player.heldWeapon.get(), &first);
    EXPECT_EQ(rival.heldWeapon.get(), &second);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
}

TEST_F(PlayerWeaponTest, DroppingPutsTheWeaponBeforeTheFeetWithItsMotion) {
    Weapon& weapon = arm<Flamingo>();
    weapon.velocity = {0.5, 0.25};
    weapon.attackTimeout = {0.4, true, 0.1};
    press(keys::z);
    player.update();
    EXPECT_EQ(player.heldWeapon, nullptr);
    EXPECT_EQ(player.texture.name, player.unarmedImage.name);
    EXPECT_EQ(count(ObjectType::Flamingo), 0u);
    world.applyPending();
    ASSERT_EQ(count(ObjectType::Flamingo), 1u);
    EXPECT_EQ(weapon.position, (Vec2{0.0, 0.5}));
    EXPECT_EQ(weapon.velocity, (Vec2{0.5, 0.25}));
    EXPECT_TRUE(weapon.attackTimeout.running);
    EXPECT_EQ(weapon.attackTimeout.elapsed, 0.1 + sixtieth);
}

TEST_F(PlayerWeaponTest, ADroppedWeaponGoesToTheEndOfItsBucket) {
    Weapon& dropped = arm<Flamingo>();
    add<Flamingo>({50.0, 0.0});
    press(keys::z);
    step();
    ASSERT_EQ(count(ObjectType::Flamingo), 2u);
    EXPECT_EQ(world.objectsOfType(ObjectType::Flamingo)[1].get(), &dropped);
}

TEST_F(PlayerWeaponTest, SwapsWeaponsWithinOneStep) {
    Weapon& dropped = arm<Flamingo>();
    Pineapple& lying = add<Pineapple>({0.0, 1.0});
    press(keys::z);
    step();
    EXPECT_EQ(player.heldWeapon.get(), &lying);
    EXPECT_EQ(player.texture.name, player.armedImage.name);
    ASSERT_EQ(count(ObjectType::Flamingo), 1u);
    EXPECT_EQ(world.first<Flamingo>(), &dropped);
    EXPECT_EQ(count(ObjectType::Pineapple), 0u);
}

TEST_F(PlayerWeaponTest, ASwapPosesBothWeapons) {
    Weapon& dropped = arm<Flamingo>();
    dropped.attackTimeout = {0.4, true, 0.1};
    Pineapple& lying = add<Pineapple>({0.0, 1.0});
    lying.attackTimeout = {1.0, true, 0.3};
    press(keys::z);
    player.update();
    EXPECT_EQ(dropped.attackTimeout.elapsed, 0.1 + sixtieth);
    EXPECT_EQ(lying.attackTimeout.elapsed, 0.3 + sixtieth);
}

TEST_F(PlayerWeaponTest, ADroppedWeaponIsNotPickedStraightBack) {
    arm<Flamingo>();
    press(keys::z);
    player.update();
    EXPECT_EQ(player.heldWeapon, nullptr);
}

TEST_F(PlayerWeaponTest, DrawsTheWeaponJustBeforeItsBearer) {
    Weapon& weapon = arm<Flamingo>();
    weapon.tintG = 0.5;
    weapon.isUI = true; // does not count in the hand
    player.position = {2.0, 1.0};
    player.zOffset = 4.0;
    player.update();
    player.draw();
    ASSERT_EQ(drawnSprites.size(), 2u);
    EXPECT_EQ(drawnSprites[0].texture.name, player.texture.name);
    const DrawnSprite& sprite = drawnSprites[1];
    EXPECT_EQ(sprite.texture.name, weapon.texture.name);
    EXPECT_EQ(sprite.position, (Vec2{player.handX, player.handY}));
    EXPECT_EQ(sprite.size, weapon.size);
    EXPECT_EQ(sprite.pivot, weapon.handPivot);
    EXPECT_EQ(sprite.scale, (Vec2{1.0, 1.0}));
    EXPECT_EQ(sprite.angle, player.handAngle);
    EXPECT_EQ(sprite.zOffset, 4.0 - (1.0 - player.handY - 0.01));
    EXPECT_EQ(sprite.mode, SpriteMode::World);
    EXPECT_EQ(sprite.tintG, 0.5);
    weapon.isFlat = true;
    player.draw();
    EXPECT_EQ(drawnSprites.back().mode, SpriteMode::Flat);
}

TEST_F(PlayerWeaponTest, DrawingTurnsASelfMirroringWeaponAndKeepsItsHandPivot) {
    Weapon& weapon = arm<Flamingo>();
    weapon.handPivot = {0.25, 0.0};
    player.mirrorX = true;
    player.draw();
    EXPECT_TRUE(weapon.mirrorX);
    EXPECT_TRUE(drawnSprites.back().mirrorX);
    EXPECT_EQ(weapon.handPivot, (Vec2{0.25, 0.0}));
    weapon.autoMirror = false;
    player.mirrorX = false;
    player.draw();
    EXPECT_TRUE(weapon.mirrorX);
}

TEST_F(PlayerWeaponTest, TheWeaponShowsWhileTheHeroBlinks) {
    Weapon& weapon = arm<Flamingo>();
    player.invulnerableTimer = {1.5, true, 0.2};
    player.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].texture.name, weapon.texture.name);
}

TEST_F(PlayerWeaponTest, AWeaponWithoutAnImageDrawsNothing) {
    arm<Weapon>();
    player.draw();
    EXPECT_EQ(drawnSprites.size(), 1u);
}

} // namespace

} // namespace dunkman
