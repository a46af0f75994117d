#include <array>
#include <string>

#include "base/frame_state_writer.h"
#include "render/image_table_writer.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/zombie.h"
#include "world/zombie_dead.h"

namespace dunkman {

namespace {

class CorpseTest : public WorldFixture {};

TEST_F(CorpseTest, BeginsTwoUnitsTallOnItsFeetWithTheFirstOfFourPicturesOfItsOwn) {
    const ZombieDead corpse;
    for (const int picture : {0, 1, 2, 3}) {
        EXPECT_EQ(corpse.frames[static_cast<std::size_t>(picture)].name,
                  writable::pictures.imageTable.at("zombieDeath" + std::to_string(picture)).name);
    }
    EXPECT_EQ(corpse.texture.name, corpse.frames[0].name);
    EXPECT_EQ(corpse.pivot, (Vec2{0.5, 0.0}));
    EXPECT_EQ(corpse.size, (Vec2{1.2, 2.0}));
}

TEST_F(CorpseTest, ChangesItsPictureThreeTimesASecond) {
    auto& corpse = add<ZombieDead>();
    for (const std::size_t picture : {0u, 1u, 2u, 3u}) {
        EXPECT_EQ(corpse.texture.name, corpse.frames[picture].name);
        step(picture == 0
                 ? 21
                 : 20); // a third of a second; the first one a step more, so as not to lie on the edge
    }
}

TEST_F(CorpseTest, AZombieWithHealthNoughtIsAlive) {
    Zombie& zombie = add<Zombie>();
    zombie.health = 1;
    zombie.takeDamage(1);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Zombie), 1u);
    EXPECT_EQ(count(ObjectType::ZombieDead), 0u);
}

TEST_F(CorpseTest, OneMoreHitAfterTheProtectionKills) {
    Zombie& zombie = add<Zombie>();
    zombie.health = 1;
    zombie.takeDamage(1);
    zombie.takeDamage(1); // protected
    EXPECT_EQ(zombie.health, 0);
    step(31);
    zombie.takeDamage(1);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    EXPECT_EQ(count(ObjectType::ZombieDead), 1u);
}

TEST_F(CorpseTest, AProtectedHitStillTestsForDeath) {
    Zombie& zombie = add<Zombie>();
    zombie.health = -1;
    zombie.invulnerableTimer.running = true;
    zombie.takeDamage(1);
    EXPECT_EQ(zombie.health, -1);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    EXPECT_EQ(count(ObjectType::ZombieDead), 1u);
}

TEST_F(CorpseTest, TwoHitsInTheStepOfDeathLeaveTwoCorpses) {
    Zombie& zombie = add<Zombie>();
    zombie.health = 0;
    zombie.takeDamage(1);
    zombie.takeDamage(1);
    world.applyPending();
    EXPECT_EQ(count(ObjectType::Zombie), 0u);
    EXPECT_EQ(count(ObjectType::ZombieDead), 2u);
}

TEST_F(CorpseTest, TakesPlaceFacingPivotAndHeightFromTheZombie) {
    Zombie& zombie = add<Zombie>({3.0, 1.0});
    zombie.health = 0;
    zombie.mirrorX = true;
    zombie.pivot = {0.4, 0.1};
    zombie.size = {7.0, 3.0};
    zombie.zOffset = 5.0;
    zombie.takeDamage(1);
    world.applyPending();
    const ZombieDead* corpse = world.first<ZombieDead>();
    ASSERT_NE(corpse, nullptr);
    EXPECT_EQ(corpse->position, (Vec2{3.0, 1.0}));
    EXPECT_TRUE(corpse->mirrorX);
    EXPECT_EQ(corpse->pivot, (Vec2{0.4, 0.1}));
    EXPECT_EQ(corpse->size, (Vec2{1.2, 3.0})); // the constructor's width until its first update
    EXPECT_EQ(corpse->zOffset, 0.0);
    step();
    EXPECT_DOUBLE_EQ(corpse->size.x, 1.8);
    EXPECT_EQ(corpse->zOffset, -0.125);
}

struct FrameCase {
    double frameTime;
    std::size_t frame;
    double zOffset;
    double width;
};

TEST_F(CorpseTest, ShowsItsPicturesOneAfterAnother) {
    writable::frameState.frameDelta = 0.0;
    for (const FrameCase& row : {FrameCase{0.0, 0, -0.125, 1.2}, FrameCase{0.99, 0, -0.125, 1.2},
                                 FrameCase{1.0, 1, -0.375, 1.6}, FrameCase{2.5, 2, -0.625, 2.0}}) {
        ZombieDead corpse;
        corpse.frameTime = row.frameTime;
        corpse.update();
        EXPECT_EQ(corpse.texture.name, corpse.frames[row.frame].name) << row.frameTime;
        EXPECT_EQ(corpse.zOffset, row.zOffset) << row.frameTime;
        EXPECT_DOUBLE_EQ(corpse.size.x, row.width) << row.frameTime;
    }
}

TEST_F(CorpseTest, TheFallEndsAfterASecondOnTheLastPicture) {
    writable::frameState.frameDelta = 0.25;
    ZombieDead corpse;
    for (int count = 0; count < 3; ++count) {
        corpse.update();
        EXPECT_LT(corpse.frameTime, 3.0);
    }
    corpse.update();
    EXPECT_EQ(corpse.frameTime, 3.0);
    EXPECT_EQ(corpse.texture.name, corpse.frames[3].name);
    EXPECT_EQ(corpse.zOffset, -0.875);
    EXPECT_DOUBLE_EQ(corpse.size.x, 2.4);
    corpse.zOffset = 1.0;
    corpse.update(); // does nothing any more
    EXPECT_EQ(corpse.zOffset, 1.0);
}

TEST_F(CorpseTest, ALongStepStopsAtTheLastPicture) {
    writable::frameState.frameDelta = 10.0;
    ZombieDead corpse;
    corpse.update();
    EXPECT_EQ(corpse.frameTime, 3.0);
}

TEST_F(CorpseTest, IsDrawnShiftedByPicture) {
    constexpr std::array<double, 4> offsetY = {0.0, 0.15, 0.3, 0.45};
    for (std::size_t frame = 0; frame < 4; ++frame) {
        ZombieDead corpse;
        corpse.position = {10.0, 1.0};
        corpse.size = {3.0, 2.0};
        corpse.frameTime = static_cast<double>(frame);
        corpse.zOffset = -0.3;
        drawnSprites.clear();
        corpse.drawScaled({1.5, 2.5}, 30.0);
        ASSERT_EQ(drawnSprites.size(), 1u);
        EXPECT_EQ(drawnSprites[0].position, (Vec2{10.0 - -0.02 * 3.0, 1.0 - offsetY[frame] * 2.0}));
        EXPECT_EQ(drawnSprites[0].scale, (Vec2{1.5, 2.5}));
        EXPECT_EQ(drawnSprites[0].angle, 30.0);
        EXPECT_EQ(drawnSprites[0].zOffset, -0.3);
        EXPECT_EQ(corpse.position, (Vec2{10.0, 1.0}));
    }
}

TEST_F(CorpseTest, FacingLeftMirrorsTheShift) {
    ZombieDead corpse;
    corpse.position = {10.0, 1.0};
    corpse.size = {3.0, 2.0};
    corpse.mirrorX = true;
    corpse.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_EQ(drawnSprites[0].position.x, 10.0 - 0.02 * 3.0);
}

TEST_F(CorpseTest, TheOverlayFlagDoesNotCount) {
    ZombieDead corpse;
    corpse.isUI = true;
    corpse.draw();
    EXPECT_EQ(drawnSprites.back().mode, SpriteMode::World);
    corpse.isFlat = true;
    corpse.draw();
    EXPECT_EQ(drawnSprites.back().mode, SpriteMode::Flat);
}

TEST_F(CorpseTest, StaysInTheWorld) {
    add<ZombieDead>();
    step(1000);
    EXPECT_EQ(count(ObjectType::ZombieDead), 1u);
}

} // namespace

} // namespace dunkman
