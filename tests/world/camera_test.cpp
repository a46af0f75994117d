#include "world/camera.h"

#include <cmath>

#include "base/frame_state_writer.h"
#include "tests/world/world_fixture.h"
#include "world/player.h"

namespace dunkman {

namespace {

class CameraTest : public WorldFixture {};

TEST_F(CameraTest, LooksTwoUnitsAboveWhereItStands) {
    const Camera camera;
    const Rect view = viewRectangle(camera);
    EXPECT_DOUBLE_EQ((view.minX + view.maxX) / 2, camera.position.x);
    EXPECT_DOUBLE_EQ((view.minY + view.maxY) / 2, camera.position.y + 2.0);
    EXPECT_EQ(camera.target, nullptr); // the hero leads
}

TEST_F(CameraTest, ReadsAndWritesItsOffset) {
    Camera camera;
    camera.readProperties(json("{offset: [1, 2.5], position: 4}"));
    EXPECT_EQ(camera.offset, (Vec2{1.0, 2.5}));
    EXPECT_EQ(camera.position, (Vec2{4.0, 4.0}));
    camera.readProperties(json("{offset: 3}"));
    EXPECT_EQ(camera.offset, (Vec2{3.0, 3.0}));
    EXPECT_EQ(camera.writeProperties().get("offset").arrayValue()[0].floatValue(), 3.0);
}

TEST_F(CameraTest, TheViewIsEighteenWideAndAsHighAsTheWindowAsks) {
    Camera camera;
    camera.position = {10.0, 1.0};
    camera.offset = {0.5, 2.0};
    writable::frameState.aspectRatio = 2.0;
    EXPECT_EQ(viewRectangle(camera), (Rect{1.5, -1.5, 19.5, 7.5}));
    writable::frameState.aspectRatio = 16.0 / 9.0;
    const Rect view = viewRectangle(camera);
    EXPECT_EQ(view.maxX - view.minX, 18.0);
    EXPECT_EQ(view.maxY - view.minY, 10.125);
}

TEST_F(CameraTest, EasesTowardsTheCentreOfTheHero) {
    Player& player = add<Player>({10.0, 1.0});
    player.pivot.x = 0.0; // the body reaches from 10 to 10.8
    Camera& camera = add<Camera>({2.0, -1.0});
    writable::frameState.frameDelta = 0.25;
    camera.lateUpdate();
    const double kept = std::exp(-1.0);
    EXPECT_NEAR(camera.position.x, (2.0 - 10.4) * kept + 10.4, 1e-14);
    EXPECT_NEAR(camera.position.y, (-1.0 - 1.0) * kept + 1.0, 1e-14);
}

TEST_F(CameraTest, ATargetTakesTheSidewaysWayAndTheHeroKeepsTheHeight) {
    add<Player>({-3.0, 1.0});
    OwnedObject target = createObject(ObjectType::Object);
    target->position = {20.0, 50.0};
    Camera& camera = add<Camera>();
    camera.target = target.get();
    writable::frameState.frameDelta = 0.25;
    camera.lateUpdate();
    const double kept = std::exp(-1.0);
    EXPECT_NEAR(camera.position.x, (0.0 - 20.5) * kept + 20.5, 1e-14);
    EXPECT_NEAR(camera.position.y, (0.0 - 1.0) * kept + 1.0, 1e-14);
}

TEST_F(CameraTest, ATargetWithoutAHeroKeepsTheHeight) {
    OwnedObject target = createObject(ObjectType::Object);
    target->position = {20.0, 50.0};
    Camera& camera = add<Camera>({0.0, 3.0});
    camera.target = target.get();
    camera.lateUpdate();
    EXPECT_GT(camera.position.x, 0.0);
    EXPECT_EQ(camera.position.y, 3.0);
}

TEST_F(CameraTest, WithNothingToFollowItStaysButNotLeftOfItsLimit) {
    Camera& camera = add<Camera>({-3.0, 7.0});
    camera.lateUpdate();
    EXPECT_EQ(camera.position, (Vec2{-3.0, 7.0}));
    camera.position.x = -8.0;
    camera.lateUpdate();
    EXPECT_EQ(camera.position, (Vec2{-5.0, 7.0}));
}

TEST_F(CameraTest, NeverGoesLeftOfItsLimitAfterTheHero) {
    add<Player>({-10.0, 0.0});
    Camera& camera = add<Camera>({-4.9, 0.0});
    for (int count = 0; count < 100; ++count) {
        camera.lateUpdate();
    }
    EXPECT_EQ(camera.position.x, -5.0);
}

} // namespace

} // namespace dunkman
