#include "screens/game_screen.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "base/frame_state_writer.h"
#include "tests/fakes/program_fixture.h"
#include "tests/screens/draw_line.h"
#include "world/camera.h"
#include "world/player.h"
#include "world/world.h"

namespace dunkman {

namespace {

class GameScreenTest : public ProgramFixture {
protected:
    GameScreenTest() {
        start(InputMode::Live);
        writable::frameState.aspectRatio = 16.0 / 9.0;
        switchTo(ScreenId::Game);
        writable::frameState.frameDelta = 1.0 / 60.0;
    }

    static Player& hero() { return *world.first<Player>(); }

    static std::vector<std::string> renderLines() {
        return drawLines([] { screenState.currentScreen->render(); });
    }

    static std::vector<DrawnSprite> hearts() {
        std::vector<DrawnSprite> found;
        for (const DrawnSprite& sprite : drawnSprites(renderLines())) {
            if (sprite.image == "pineappleHeart") {
                found.push_back(sprite);
            }
        }
        return found;
    }
};

TEST_F(GameScreenTest, HealthZeroShowsNoHeartsAndGoesOn) {
    hero().health = 0;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::Game));
    EXPECT_TRUE(hearts().empty());
}

TEST_F(GameScreenTest, HealthBelowZeroEndsTheGameInTheSameStep) {
    hero().health = -1;
    screenState.currentScreen->update();
    EXPECT_TRUE(isCurrent(ScreenId::GameOver));
}

TEST_F(GameScreenTest, EnteringAgainStartsFromTheSceneFile) {
    hero().position = {5.0, 1.0};
    hero().health = 1;
    switchTo(ScreenId::Game);
    EXPECT_EQ(hero().position, (Vec2{0.0, 0.0}));
    EXPECT_EQ(hero().health, 5);
    EXPECT_EQ(world.objectsOfType(ObjectType::Player).size(), 1u);
}

TEST_F(GameScreenTest, DrawsBackdropThenWorldThenHeartsEachUnderItsView) {
    std::string order;
    for (const std::string& line : renderLines()) {
        order += line.starts_with("view") ? "view " : drawnSprites({line})[0].image + ' ';
    }
    EXPECT_EQ(order, "view sunset view playerUnarmed view pineappleHeart pineappleHeart pineappleHeart "
                     "pineappleHeart pineappleHeart ");
}

TEST_F(GameScreenTest, BackdropFillsTheIdentityView) {
    const DrawnSprite backdrop = drawnSprites(renderLines())[0];
    EXPECT_EQ(backdrop.dest, (std::vector<double>{-1.0, -1.0, 2.0, 2.0}));
    EXPECT_FLOAT_EQ(static_cast<float>(backdrop.pos[1]), 0.3f);
    EXPECT_EQ(backdrop.flags, 2u);
}

TEST_F(GameScreenTest, WithoutACameraTheWorldIsSeenThroughTheBackdropsView) {
    data.write("scene.json5", R"([{"recipe":"hero"}])");
    switchTo(ScreenId::Game);
    int views = 0;
    for (const std::string& line : renderLines()) {
        views += line.starts_with("view") ? 1 : 0;
    }
    EXPECT_EQ(views, 2);
    EXPECT_NE(simulated::machine.debugLines.back().find("no Camera"), std::string::npos);
}

TEST_F(GameScreenTest, HeartsStandInTheUpperLeftCornerWithTheirGap) {
    const std::vector<DrawnSprite> row = hearts();
    ASSERT_EQ(row.size(), 5u);
    EXPECT_NEAR(row[0].pos[0], -9.0 + 0.4 + 0.25, 1e-5); // square test picture: half a unit wide
    EXPECT_NEAR(row[0].pos[1], 9.0 / (16.0 / 9.0) - 0.45, 1e-5);
    EXPECT_NEAR(row[1].pos[0] - row[0].pos[0], 0.7, 1e-5);
    EXPECT_NEAR(row[0].dest[3], 0.5, 1e-6);
    EXPECT_EQ(row[0].flags, 2u); // upright, and no overlay: the class's own defaults
}

TEST_F(GameScreenTest, HeartsFarRightOfTheViewAreNotDrawn) {
    hero().health = std::numeric_limits<std::int32_t>::max();
    const std::vector<DrawnSprite> row = hearts();
    EXPECT_EQ(row.size(), 1000u);
    EXPECT_GT(row.back().pos[0], 9.0);
}

TEST_F(GameScreenTest, HeartsRockOneAfterTheOther) {
    writable::frameState.elapsedTime = 1.0;
    const std::vector<DrawnSprite> row = hearts();
    for (std::size_t i = 0; i < row.size(); ++i) {
        const double degrees = std::sin(8.0 - static_cast<double>(i) * 0.4) * 15.0;
        EXPECT_NEAR(row[i].pos[3], std::sin(-degrees * 3.14159265359 / 180.0), 1e-6);
    }
}

TEST_F(GameScreenTest, WorldViewLooksFromTenUnitsAtTheCamerasPoint) {
    const Matrix4 view = worldViewProjection(3.0, 2.0);
    // The look point is in the middle of the screen, and a tenth of the screen's half height at tan of half the angle.
    const auto project = [&view](double x, double y) {
        const auto w = static_cast<double>(view[15]);
        return std::pair(static_cast<double>(view[0]) * x / w + static_cast<double>(view[12]) / w,
                         static_cast<double>(view[5]) * y / w + static_cast<double>(view[13]) / w);
    };
    EXPECT_NEAR(project(3.0, 2.0).first, 0.0, 1e-6);
    EXPECT_NEAR(project(3.0, 2.0).second, 0.0, 1e-6);
    const double halfHeight = 10.0 * std::tan(0.5 * std::atan(10.125 / 10.0));
    EXPECT_NEAR(project(3.0, 2.0 + halfHeight).second, 1.0, 1e-5);
    EXPECT_NEAR(project(3.0 + halfHeight * 16.0 / 9.0, 2.0).first, 1.0, 1e-5);
}

TEST_F(GameScreenTest, InterfaceAndWorldViewsAreIndependent) {
    const Matrix4 interfaceView = healthViewProjection();
    EXPECT_FLOAT_EQ(interfaceView[0], 1.0f / 9.0f);
    EXPECT_FLOAT_EQ(interfaceView[5], 1.0f / 5.0625f);
    EXPECT_FLOAT_EQ(interfaceView[10], -0.01f);
    const Matrix4 worldView = worldViewProjection(0.0, 0.0);
    EXPECT_GT(worldView[5] / worldView[15], interfaceView[5]);
}

} // namespace

} // namespace dunkman
