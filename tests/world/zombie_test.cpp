#include "world/zombie.h"

#include "base/frame_state.h"
#include "render/image_table.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/player.h"

namespace dunkman {

namespace {

// The hero is 0.8 wide and a zombie 1.2, so the gap closes at 0.4 + 0.54 = 0.94, give or take 0.12.
constexpr double inReach = 0.94;

class ZombieTest : public WorldFixture {
protected:
    ZombieTest() : player(add<Player>()), zombie(add<Zombie>()) {}
    Player& player;
    Zombie& zombie;
};

TEST_F(ZombieTest, WalksWithHalfTheThrustOfTheHero) {
    EXPECT_EQ(zombie.acceleration, (Vec2{player.acceleration.x / 2, player.acceleration.y / 2}));
    EXPECT_EQ(zombie.friction, player.friction);
}

TEST_F(ZombieTest, StandsTwoUnitsTallInTheProportionsOfItsPicture) {
    EXPECT_EQ(zombie.texture.name, pictures.imageTable.at("zombie").name);
    EXPECT_EQ(zombie.size, (Vec2{1.2, 2.0}));
}

TEST_F(ZombieTest, IsProtectedForHalfASecondAfterAHitAndHasTwoToLose) {
    player.position.x = 50.0;
    zombie.takeDamage(1);
    step(29);
    zombie.takeDamage(1); // still protected
    EXPECT_EQ(zombie.health, 1);
    step(2);
    zombie.takeDamage(1);
    EXPECT_EQ(zombie.health, 0);
}

TEST_F(ZombieTest, FacesTheWayItWalksOfItself) { EXPECT_TRUE(zombie.autoMirror); }

TEST_F(ZombieTest, ReadsItsKeys) {
    zombie.attackRateTimer = {3.0, true, 1.0};
    zombie.readProperties(json("{attackRateTimer: 2, searchRadius: 4, attackDelay: 0.5, health: 9}"));
    EXPECT_EQ(zombie.attackRateTimer.duration, 2.0);
    EXPECT_FALSE(zombie.attackRateTimer.running);
    EXPECT_EQ(zombie.attackRateTimer.elapsed, 0.0);
    EXPECT_EQ(zombie.searchRadius, 4.0);
    EXPECT_EQ(zombie.attackDelay, 0.5);
    EXPECT_EQ(zombie.health, 9);
    zombie.readProperties(json("{attackRateTimer: 'soon', searchRadius: true}"));
    EXPECT_EQ(zombie.attackRateTimer.duration, 2.0);
    EXPECT_EQ(zombie.searchRadius, 4.0);
}

TEST_F(ZombieTest, OnlyTheHorizontalDistanceCountsForNoticing) {
    player.position = {6.0, 50.0};
    zombie.update();
    EXPECT_EQ(zombie.velocity, (Vec2{10.0 * sixtieth, 10.0 * sixtieth}));
    zombie.velocity = {0.0, 0.0};
    player.position = {6.001, 0.0};
    zombie.update();
    EXPECT_EQ(zombie.velocity, (Vec2{0.0, 0.0}));
}

TEST_F(ZombieTest, FacesTheHeroAlsoBeforeItMoves) {
    player.position.x = -3.0;
    zombie.update();
    EXPECT_TRUE(zombie.mirrorX);
    player.position.x = 3.0;
    zombie.update();
    EXPECT_FALSE(zombie.mirrorX);
    zombie.inverseMirror = true;
    zombie.update();
    EXPECT_TRUE(zombie.mirrorX);
}

TEST_F(ZombieTest, ExactlyLevelKeepsTheFacingAndCountsAsTheHeroBeingToTheRight) {
    zombie.mirrorX = true;
    zombie.update(); // the gap is -0.94: it steps back to the left
    EXPECT_TRUE(zombie.mirrorX);
    EXPECT_EQ(zombie.velocity.x, -10.0 * sixtieth);
    EXPECT_EQ(zombie.velocity.y, 0.0);
}

TEST_F(ZombieTest, StopsWhereTheBodiesTouch) {
    player.position.x = inReach + 0.1199;
    zombie.update();
    EXPECT_TRUE(zombie.attackArmed);
    zombie.attackArmed = false;
    player.position.x = inReach + 0.1201;
    zombie.update();
    EXPECT_FALSE(zombie.attackArmed);
    EXPECT_GT(zombie.velocity.x, 0.0);
    zombie.velocity.x = 0.0;
    player.position.x = inReach - 0.1201;
    zombie.update();
    EXPECT_LT(zombie.velocity.x, 0.0);
}

TEST_F(ZombieTest, ATenthOfItsHeightCountsAsLevel) {
    player.position = {inReach, 0.1999};
    zombie.update();
    EXPECT_TRUE(zombie.attackArmed);
    zombie.attackArmed = false;
    player.position.y = 0.2;
    zombie.update();
    EXPECT_FALSE(zombie.attackArmed);
    EXPECT_EQ(zombie.velocity.y, 10.0 * sixtieth);
    EXPECT_EQ(zombie.velocity.x, 0.0);
}

TEST_F(ZombieTest, ArrivingWindsUp) {
    player.position.x = inReach;
    zombie.update();
    EXPECT_TRUE(zombie.attackArmed);
    EXPECT_TRUE(zombie.attackRateTimer.running);
    EXPECT_EQ(zombie.attackRateTimer.elapsed, 3.0 - 0.3);
    EXPECT_EQ(player.health, 5);
}

TEST_F(ZombieTest, TheFirstStrikeComesNineteenStepsAfterArrival) {
    player.position.x = inReach;
    zombie.update();
    for (int count = 0; count < 18; ++count) {
        zombie.update();
    }
    EXPECT_EQ(player.health, 5);
    zombie.update();
    EXPECT_EQ(player.health, 4);
    EXPECT_TRUE(zombie.attackArmed);
    EXPECT_TRUE(zombie.attackRateTimer.running);
    EXPECT_EQ(zombie.attackRateTimer.elapsed, 0.0);
}

TEST_F(ZombieTest, ThenItStrikesOncePerPause) {
    player.position.x = inReach;
    for (int count = 0; count < 20; ++count) {
        zombie.update();
    }
    EXPECT_EQ(player.health, 4);
    player.invulnerableTimer.running = false;
    for (int count = 0; count < 180; ++count) {
        zombie.update();
    }
    EXPECT_EQ(player.health, 4);
    zombie.update(); // 180 sixtieths fall short of 3
    EXPECT_EQ(player.health, 3);
}

TEST_F(ZombieTest, AWindUpLongerThanThePauseStartsBelowZero) {
    zombie.attackDelay = 4.0;
    player.position.x = inReach;
    zombie.update();
    EXPECT_EQ(zombie.attackRateTimer.elapsed, -1.0);
    int steps = 0;
    while (player.health == 5 && steps < 1000) {
        zombie.update();
        ++steps;
    }
    EXPECT_EQ(steps, 241); // the sums of sixtieths again, from -1 to 3
}

TEST_F(ZombieTest, LeavingReachDisarmsButLetsTheTimerRun) {
    player.position.x = inReach;
    zombie.update();
    player.position.x = 3.0;
    zombie.update();
    EXPECT_FALSE(zombie.attackArmed);
    EXPECT_TRUE(zombie.attackRateTimer.running);
    for (int count = 0; count < 30; ++count) {
        zombie.update();
    }
    EXPECT_FALSE(zombie.attackRateTimer.running);
    EXPECT_EQ(player.health, 5);
}

TEST_F(ZombieTest, WithoutAHeroItStandsButItsTimersRun) {
    world.queueDestroy(player);
    world.applyPending();
    zombie.invulnerableTimer.running = true;
    zombie.attackRateTimer.running = true;
    zombie.velocity.x = 1.0;
    zombie.update();
    EXPECT_EQ(zombie.invulnerableTimer.elapsed, sixtieth);
    EXPECT_EQ(zombie.attackRateTimer.elapsed, sixtieth);
    EXPECT_EQ(zombie.position.x, sixtieth);
    EXPECT_LT(zombie.velocity.x, 1.0);
}

TEST_F(ZombieTest, BlinksWhileItIsProtectedAlsoWhenSwelling) {
    zombie.attackRateTimer.running = true;
    zombie.invulnerableTimer = {0.5, true, 0.2};
    zombie.draw();
    EXPECT_TRUE(drawnSprites.empty());
    zombie.invulnerableTimer.elapsed = 0.3;
    zombie.draw();
    EXPECT_EQ(drawnSprites.size(), 1u);
}

struct SwellCase {
    double elapsed;
    double scale;
};

TEST_F(ZombieTest, SwellsOverTheFirstFifthOfThePause) {
    zombie.attackRateTimer.running = true;
    zombie.walkAnimation = 0.5;
    for (const SwellCase& row :
         {SwellCase{0.0, 1.0}, SwellCase{0.15, 1.1}, SwellCase{0.3, 1.2}, SwellCase{0.45, 1.1},
          SwellCase{0.6, 1.0}, SwellCase{2.0, 1.0}, SwellCase{-1.0, 1.0}}) {
        zombie.attackRateTimer.elapsed = row.elapsed;
        drawnSprites.clear();
        zombie.draw();
        ASSERT_EQ(drawnSprites.size(), 1u);
        EXPECT_DOUBLE_EQ(drawnSprites[0].scale.x, row.scale) << row.elapsed;
        EXPECT_EQ(drawnSprites[0].scale.x, drawnSprites[0].scale.y);
        EXPECT_EQ(drawnSprites[0].angle, 0.0);
    }
    EXPECT_EQ(zombie.walkAnimation, 0.5); // the walk stands while it swells
}

TEST_F(ZombieTest, APauseOfNothingDrawsAtTrueSize) {
    zombie.attackRateTimer = {0.0, true, 0.0}; // 0 / 0
    zombie.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].scale, (Vec2{1.0, 1.0}));
}

TEST_F(ZombieTest, OtherwiseItIsDrawnAsAWalker) {
    zombie.draw();
    EXPECT_EQ(zombie.walkAnimation, sixtieth);
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].scale.x, 0.95);
}

} // namespace

} // namespace dunkman
