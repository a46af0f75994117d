#include <cmath>

#include "base/frame_state_writer.h"
#include "tests/world/drawn_sprites.h"
#include "tests/world/world_fixture.h"
#include "world/hint.h"
#include "world/resort_sign.h"
#include "world/wave.h"

namespace dunkman {

namespace {

class DecorationTest : public WorldFixture {};

TEST_F(DecorationTest, ASignBeginsUprightAndAtItsOwnBeginning) {
    auto& sign = add<ResortSign>();
    step();
    EXPECT_EQ(sign.tilt, 0.0);
    EXPECT_EQ(sign.clock, sixtieth);
}

struct SignCase {
    double clock;
    double tilt;
};

TEST_F(DecorationTest, ASignSwingsOnceAndStays) {
    writable::frameState.frameDelta = 0.0;
    ResortSign sign;
    for (const SignCase& row : {SignCase{0.0, 0.0}, SignCase{0.8, 0.0}, SignCase{0.85, 7.5},
                                SignCase{0.9, 15.0}, SignCase{100.0, 15.0}}) {
        sign.clock = row.clock;
        sign.update();
        EXPECT_NEAR(sign.tilt, row.tilt, 1e-12) << row.clock;
    }
}

TEST_F(DecorationTest, ASignCountsItsOwnTime) {
    writable::frameState.frameDelta = 0.25;
    ResortSign sign;
    sign.update();
    sign.update();
    EXPECT_EQ(sign.clock, 0.5);
}

TEST_F(DecorationTest, ASwingOfNoTimeIsCalmAtItsVeryMoment) {
    writable::frameState.frameDelta = 0.0;
    ResortSign sign;
    sign.endTime = sign.startTime;
    sign.clock = sign.startTime; // 0 / 0
    sign.update();
    EXPECT_EQ(sign.tilt, 0.0);
}

TEST_F(DecorationTest, AWaveIsAHundredCopiesSideBySideBobbingTogether) {
    Wave wave;
    wave.useImage("box");
    wave.position = {3.0, 0.5};
    wave.size = {0.75, 0.5};
    wave.tilt = 4.0;
    writable::frameState.elapsedTime = 0.2;
    wave.draw();
    ASSERT_EQ(drawnSprites.size(), 100u);
    const double phase = 0.5 * 1.5 + 0.2 * 2.0;
    EXPECT_NEAR(drawnSprites[0].position.x, 3.0 + std::sin(phase) * 0.25 - 35.0, 1e-12);
    EXPECT_NEAR(drawnSprites[0].position.y, 0.5 - std::abs(std::cos(phase)) * 0.25, 1e-12);
    EXPECT_NEAR(drawnSprites[99].position.x, drawnSprites[0].position.x + 99 * 0.75, 1e-9);
    EXPECT_EQ(drawnSprites[99].position.y, drawnSprites[0].position.y);
    EXPECT_EQ(drawnSprites[50].angle, 4.0);
    EXPECT_EQ(drawnSprites[50].scale, (Vec2{1.0, 1.0}));
}

TEST_F(DecorationTest, DrawingAWaveLeavesItWhereItIs) {
    Wave wave;
    wave.useImage("box");
    wave.position = {0.1, 0.7};
    writable::frameState.elapsedTime = 1.3;
    wave.draw();
    EXPECT_EQ(wave.position, (Vec2{0.1, 0.7}));
    EXPECT_EQ(wave.getType(), ObjectType::Wave);
}

TEST_F(DecorationTest, AHintHops) {
    Hint hint;
    hint.useImage("box");
    hint.position = {1.0, 2.0};
    hint.tilt = 10.0;
    writable::frameState.elapsedTime = 1.0; // the sine of 4 is negative
    hint.draw();
    ASSERT_EQ(drawnSprites.size(), 1u);
    EXPECT_NEAR(drawnSprites[0].position.y, 2.0 + std::abs(std::sin(4.0)) * 0.1, 1e-12);
    EXPECT_EQ(drawnSprites[0].position.x, 1.0);
    EXPECT_EQ(drawnSprites[0].angle, 10.0);
    EXPECT_EQ(hint.position, (Vec2{1.0, 2.0}));
    EXPECT_EQ(hint.getType(), ObjectType::Hint);
}

} // namespace

} // namespace dunkman
