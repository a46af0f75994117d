#include "world/player.h"

#include "base/frame_state_writer.h"
#include "base/key_states_writer.h"
#include "render/image_table.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/arena.h"
#include "world/camera.h"

namespace dunkman {

namespace {

class PlayerTest : public WorldFixture {
protected:
    PlayerTest() : player(add<Player>()) {}
    Player& player;
};

TEST_F(PlayerTest, BeginsWithFiveHeartsEmptyHandsAndFacingItsWay) {
    EXPECT_EQ(player.health, 5);
    EXPECT_EQ(player.heldWeapon, nullptr);
    EXPECT_TRUE(player.autoMirror);
}

TEST_F(PlayerTest, AHitProtectsForASecondAndAHalf) {
    player.takeDamage(1);
    step(89);
    player.takeDamage(1);
    EXPECT_EQ(player.health, 4);
    step(2);
    player.takeDamage(1);
    EXPECT_EQ(player.health, 3);
}

TEST_F(PlayerTest, StartsUnarmedInTheProportionsOfThatPicture) {
    EXPECT_EQ(player.texture.name, pictures.imageTable.at("playerUnarmed").name);
    EXPECT_EQ(player.unarmedImage.name, pictures.imageTable.at("playerUnarmed").name);
    EXPECT_EQ(player.armedImage.name, pictures.imageTable.at("player").name);
    EXPECT_EQ(player.size, (Vec2{0.8, 2.0}));
    EXPECT_EQ(player.pivot, (Vec2{0.5, 0.0}));
}

struct SteeringCase {
    std::int32_t key;
    Vec2 direction;
};

TEST_F(PlayerTest, EveryMovementKeySteersItsWay) {
    for (const SteeringCase& row :
         {SteeringCase{keys::d, {1, 0}}, SteeringCase{keys::right, {1, 0}}, SteeringCase{keys::a, {-1, 0}},
          SteeringCase{keys::left, {-1, 0}}, SteeringCase{keys::w, {0, 1}}, SteeringCase{keys::up, {0, 1}},
          SteeringCase{keys::s, {0, -1}}, SteeringCase{keys::down, {0, -1}}}) {
        for (const KeyState state : {KeyState::Held, KeyState::Pressed}) {
            keyState(row.key) = state;
            player.velocity = {0.0, 0.0};
            player.friction = {0.0, 0.0};
            player.update();
            EXPECT_EQ(player.velocity,
                      (Vec2{row.direction.x * 20.0 * sixtieth, row.direction.y * 20.0 * sixtieth}))
                << row.key;
        }
        keyState(row.key) = KeyState::Released;
        player.velocity = {0.0, 0.0};
        player.update();
        EXPECT_EQ(player.velocity, (Vec2{0.0, 0.0})) << row.key;
        release(row.key);
    }
}

TEST_F(PlayerTest, OppositeKeysCancelAndEqualKeysCountOnce) {
    player.friction = {0.0, 0.0};
    hold(keys::d);
    hold(keys::a);
    player.update();
    EXPECT_EQ(player.velocity.x, 0.0);
    release(keys::a);
    hold(keys::right);
    player.update();
    EXPECT_EQ(player.velocity.x, 20.0 * sixtieth);
}

TEST_F(PlayerTest, TopSpeedApproachesThrustOverFriction) {
    writable::frameState.frameDelta = 1.0 / 600.0;
    hold(keys::d);
    step(3000);
    EXPECT_NEAR(player.velocity.x, 2.5, 0.05);
}

TEST_F(PlayerTest, StaysOnTheBeach) {
    player.position = {-20.0, 5.0};
    player.update();
    EXPECT_EQ(player.position, (Vec2{-11.0, 1.5}));
    player.position = {0.0, -5.0};
    player.update();
    EXPECT_EQ(player.position, (Vec2{0.0, -1.5}));
    player.position = {500.0, 0.0};
    player.update();
    EXPECT_EQ(player.position.x, 500.0);
}

TEST_F(PlayerTest, AHeldCameraKeepsTheHeroWithinItsUnequalMargins) {
    Camera& camera = add<Camera>();
    camera.target = &player;
    player.position.x = -8.0;
    player.update();
    EXPECT_EQ(player.position.x, -6.0);
    player.position.x = 8.0;
    player.update();
    EXPECT_EQ(player.position.x, 5.5);
    player.position.x = 5.0;
    player.update();
    EXPECT_EQ(player.position.x, 5.0);
}

TEST_F(PlayerTest, ACameraThatFollowsTheHeroDoesNotHoldHim) {
    add<Camera>();
    player.position.x = 8.0;
    player.update();
    EXPECT_EQ(player.position.x, 8.0);
}

TEST_F(PlayerTest, TheClampUsesTheFirstCameraAndItsOffset) {
    Camera& camera = add<Camera>({20.0, 0.0});
    camera.offset = {1.0, 2.0};
    camera.target = &player;
    add<Camera>({0.0, 0.0});
    player.update();
    EXPECT_EQ(player.position.x, 15.0); // 20 + 1 - 9 + 3
}

TEST_F(PlayerTest, FacesItsWayWhileWalking) {
    hold(keys::a);
    player.update();
    EXPECT_TRUE(player.mirrorX);
    release(keys::a);
    player.velocity.x = 0.0;
    player.update();
    EXPECT_TRUE(player.mirrorX);
    hold(keys::d);
    player.update();
    EXPECT_FALSE(player.mirrorX);
}

TEST_F(PlayerTest, SavesTheWalkerKeysOnly) {
    const Walker walker;
    EXPECT_EQ(player.writeProperties().objectValue().size(), walker.writeProperties().objectValue().size());
    EXPECT_EQ(player.writeProperties().get("_type").stringValue(), "Player");
}

TEST_F(PlayerTest, UnarmedItDrawsOneSprite) {
    player.draw();
    EXPECT_EQ(drawnSprites.size(), 1u);
}

TEST_F(PlayerTest, TheProtectionAdvancesOncePerStep) {
    player.takeDamage(1);
    player.update();
    EXPECT_EQ(player.invulnerableTimer.elapsed, sixtieth);
}

} // namespace

} // namespace dunkman
