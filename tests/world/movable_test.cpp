#include "world/movable.h"

#include "base/frame_state_writer.h"
#include "tests/world/world_fixture.h"
#include "world/interactable.h"

namespace dunkman {

namespace {

class MovableTest : public WorldFixture {
protected:
    Movable movable;
};

TEST_F(MovableTest, ThrustAgainstFrictionComesToTwoAndAHalfUnitsASecondOnBothAxes) {
    EXPECT_EQ(movable.acceleration.x / movable.friction.x, 2.5);
    EXPECT_EQ(movable.acceleration.y / movable.friction.y, 2.5);
}

TEST_F(MovableTest, StaysWhereItIsPutFacingAsItIsPut) {
    auto& fresh = add<Movable>({3.0, 1.0});
    step(10);
    EXPECT_EQ(fresh.position, (Vec2{3.0, 1.0}));
    fresh.velocity.x = -1.0;
    step();
    EXPECT_FALSE(fresh.mirrorX);
}

TEST_F(MovableTest, MovesWithTheVelocityOfTheStartOfTheStep) {
    writable::frameState.frameDelta = 0.1;
    movable.velocity = {10.0, -20.0};
    movable.update();
    EXPECT_EQ(movable.position, (Vec2{1.0, -2.0}));
    // 1 - 8 * 0.1 as doubles give it, a hair below 0.2
    EXPECT_DOUBLE_EQ(movable.velocity.x, 2.0);
    EXPECT_EQ(movable.velocity.x, 10.0 * (1.0 - 8.0 * 0.1));
    EXPECT_DOUBLE_EQ(movable.velocity.y, -4.0);
}

TEST_F(MovableTest, StopsInAStepAsLongAsTheFrictionAllows) {
    for (const double seconds : {0.125, 0.2, 5.0}) {
        writable::frameState.frameDelta = seconds;
        movable.velocity = {10.0, -10.0};
        movable.update();
        EXPECT_EQ(movable.velocity, (Vec2{0.0, 0.0})) << seconds;
    }
}

TEST_F(MovableTest, WithoutFrictionOnAnAxisKeepsThatVelocity) {
    movable.friction = {0.0, 8.0};
    movable.velocity = {3.0, 3.0};
    for (int count = 0; count < 100; ++count) {
        movable.update();
    }
    EXPECT_EQ(movable.velocity.x, 3.0);
    EXPECT_LT(movable.velocity.y, 0.001);
}

TEST_F(MovableTest, AutoMirrorFacesTheDirectionOfTravel) {
    movable.autoMirror = true;
    movable.velocity.x = -1.0;
    movable.update();
    EXPECT_TRUE(movable.mirrorX);
    movable.velocity.x = 1.0;
    movable.update();
    EXPECT_FALSE(movable.mirrorX);
}

TEST_F(MovableTest, StandingStillKeepsTheFacing) {
    movable.autoMirror = true;
    movable.mirrorX = true;
    movable.velocity.x = 0.0;
    movable.update();
    EXPECT_TRUE(movable.mirrorX);
}

TEST_F(MovableTest, InverseMirrorTurnsTheFacingRound) {
    movable.autoMirror = true;
    movable.inverseMirror = true;
    movable.velocity.x = 1.0;
    movable.update();
    EXPECT_TRUE(movable.mirrorX);
    movable.velocity.x = -1.0;
    movable.update();
    EXPECT_FALSE(movable.mirrorX);
}

TEST_F(MovableTest, WithoutAutoMirrorTheFacingStays) {
    movable.velocity.x = -1.0;
    movable.update();
    EXPECT_FALSE(movable.mirrorX);
}

TEST_F(MovableTest, ReadsItsKeysAndTheDrawableOnes) {
    movable.readProperties(json("{velocity: 3, friction: [1, 2.5], acceleration: 4.0, autoMirror: true,"
                                " inverseMirror: true, tilt: 5}"));
    EXPECT_EQ(movable.velocity, (Vec2{3.0, 3.0}));
    EXPECT_EQ(movable.friction, (Vec2{1.0, 2.5}));
    EXPECT_EQ(movable.acceleration, (Vec2{4.0, 4.0}));
    EXPECT_TRUE(movable.autoMirror);
    EXPECT_TRUE(movable.inverseMirror);
    EXPECT_EQ(movable.tilt, 5.0);
}

TEST_F(MovableTest, NeverReadsItsAcceleration) {
    movable.acceleration = {100.0, 100.0};
    movable.update();
    EXPECT_EQ(movable.velocity, (Vec2{0.0, 0.0}));
}

TEST_F(MovableTest, AnInteractableIsNotHighlightedAndDoesNotSaveTheFlag) {
    Interactable item;
    EXPECT_FALSE(item.highlighted);
    item.readProperties(json("{highlighted: true}"));
    EXPECT_FALSE(item.highlighted);
    EXPECT_EQ(item.getType(), ObjectType::Interactable);
    EXPECT_FALSE(item.writeProperties().contains("highlighted"));
}

} // namespace

} // namespace dunkman
