#include "world/walker.h"

#include <cmath>

#include "base/frame_state_writer.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

class WalkerTest : public WorldFixture {
protected:
    WalkerTest() { walker.useImage("zombie"); }
    Walker walker;
};

TEST_F(WalkerTest, StandsOnItsFeetTwoUnitsTall) {
    const Walker fresh;
    EXPECT_EQ(fresh.pivot, (Vec2{0.5, 0.0}));
    EXPECT_EQ(fresh.size, (Vec2{1.0, 2.0}));
    EXPECT_EQ(fresh.getType(), ObjectType::Walker);
}

TEST_F(WalkerTest, TwoHitsTakeItsHealthASecondAndAHalfApart) {
    auto& fresh = add<Walker>();
    fresh.takeDamage(1);
    step(89);
    fresh.takeDamage(1); // still protected
    EXPECT_EQ(fresh.health, 1);
    step(2);
    fresh.takeDamage(1);
    EXPECT_EQ(fresh.health, 0);
}

TEST_F(WalkerTest, FacesAsItWasPlacedWhereverItWalks) {
    auto& fresh = add<Walker>();
    fresh.velocity.x = -1.0;
    step();
    EXPECT_FALSE(fresh.mirrorX);
}

TEST_F(WalkerTest, ReadsItsKeys) {
    walker.invulnerableTimer = {1.5, true, 1.0};
    walker.readProperties(json("{walkAnimation: 3, health: 7, invulnerableTimer: 2.5, velocity: 1}"));
    EXPECT_EQ(walker.walkAnimation, 3.0);
    EXPECT_EQ(walker.health, 7);
    EXPECT_EQ(walker.invulnerableTimer.duration, 2.5);
    EXPECT_FALSE(walker.invulnerableTimer.running);
    EXPECT_EQ(walker.invulnerableTimer.elapsed, 0.0);
    EXPECT_EQ(walker.velocity, (Vec2{1.0, 1.0}));
}

TEST_F(WalkerTest, HealthGivenAsAFloatIsIgnored) {
    walker.readProperties(json("{health: 7.0}"));
    EXPECT_EQ(walker.health, 2);
}

TEST_F(WalkerTest, AHitCostsHealthAndStartsTheProtection) {
    walker.takeDamage(1);
    EXPECT_EQ(walker.health, 1);
    EXPECT_TRUE(walker.invulnerableTimer.running);
    EXPECT_EQ(walker.invulnerableTimer.elapsed, 0.0);
}

TEST_F(WalkerTest, AHitDuringTheProtectionChangesNothing) {
    walker.takeDamage(1);
    walker.invulnerableTimer.elapsed = 0.5;
    walker.takeDamage(1);
    EXPECT_EQ(walker.health, 1);
    EXPECT_EQ(walker.invulnerableTimer.elapsed, 0.5);
}

TEST_F(WalkerTest, TheProtectionEndsAfterItsDuration) {
    writable::frameState.frameDelta = 0.25;
    walker.takeDamage(1);
    for (int count = 0; count < 5; ++count) {
        walker.update();
    }
    walker.takeDamage(1);
    EXPECT_EQ(walker.health, 1);
    walker.update(); // 1.5 seconds
    walker.takeDamage(1);
    EXPECT_EQ(walker.health, 0);
}

TEST_F(WalkerTest, UpdateMovesIt) {
    writable::frameState.frameDelta = 0.1;
    walker.velocity = {1.0, 0.0};
    walker.update();
    EXPECT_EQ(walker.position.x, 0.1);
}

TEST_F(WalkerTest, StandingStillItBreathes) {
    writable::frameState.frameDelta = 0.016;
    walker.draw();
    EXPECT_EQ(walker.walkAnimation, 0.016);
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].scale.x, 0.95);
    EXPECT_NEAR(drawnSprites[0].scale.y, std::cos(0.016) * 0.1 + 0.95, 1e-15);
    EXPECT_EQ(drawnSprites[0].angle, 0.0);
}

TEST_F(WalkerTest, WalkingSquashesAndStretches) {
    writable::frameState.frameDelta = 0.1;
    walker.velocity = {-0.5, 0.3}; // s = 0.4
    walker.walkAnimation = 1.0;
    walker.tilt = 30.0;
    walker.draw();
    const double phase = 1.0 + (0.4 * 7.0 + 1.0) * 0.1;
    EXPECT_NEAR(walker.walkAnimation, phase, 1e-15);
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_NEAR(drawnSprites[0].scale.x, std::sin(phase) * 0.4 * 0.1 + 0.95, 1e-15);
    EXPECT_NEAR(drawnSprites[0].scale.y, std::cos(phase) * 0.08 + (0.4 * 0.025000000000000022 + 0.95), 1e-15);
    EXPECT_EQ(drawnSprites[0].angle, 0.0); // the tilt is not used
}

TEST_F(WalkerTest, SpeedCountsUpToTwo) {
    writable::frameState.frameDelta = 0.1;
    walker.velocity = {10.0, 10.0};
    walker.draw();
    EXPECT_EQ(walker.walkAnimation, 8.0 * 0.1);
}

TEST_F(WalkerTest, BlinksSevenPhasesPerSecondAfterAHit) {
    walker.takeDamage(1);
    for (const double shown : {0.0, 0.142, 0.286, 0.428, 0.572}) {
        walker.invulnerableTimer.elapsed = shown;
        drawnSprites.clear();
        walker.draw();
        EXPECT_EQ(drawnSprites.size(), 1u) << shown;
    }
    for (const double hidden : {0.143, 0.285, 0.429, 0.571}) {
        walker.invulnerableTimer.elapsed = hidden;
        drawnSprites.clear();
        walker.draw();
        EXPECT_TRUE(drawnSprites.empty()) << hidden;
    }
}

TEST_F(WalkerTest, TheWalkStandsWhileTheBlinkHidesIt) {
    walker.takeDamage(1);
    walker.invulnerableTimer.elapsed = 0.2;
    walker.draw();
    EXPECT_EQ(walker.walkAnimation, 0.0);
}

} // namespace

} // namespace dunkman
