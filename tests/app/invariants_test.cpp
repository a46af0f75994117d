// What the code relies on, and no data, key or machine can break, stops a developer's build at the spot.
#include <gtest/gtest.h>

#include "render/sprite.h"
#include "render/view.h"
#include "tests/fakes/program_fixture.h"
#include "world/camera.h"
#include "world/object_type.h"
#include "world/world.h"

namespace dunkman {

namespace {

class InvariantDeathTest : public ProgramFixture {
protected:
    void SetUp() override {
#ifdef NDEBUG
        GTEST_SKIP() << "built without asserts";
#endif
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }

    static void addCamera() {
        world.queueAdd(makeObject<Camera>());
        world.applyPending();
    }
};

TEST_F(InvariantDeathTest, QueuesAreNotAppliedDuringAWalk) {
    addCamera();
    EXPECT_DEATH(world.walk<Camera>([](Camera&) { world.applyPending(); }), "passages == 0");
}

TEST_F(InvariantDeathTest, TheWorldIsNotClearedDuringAWalk) {
    addCamera();
    EXPECT_DEATH(world.walk<Camera>([](Camera&) { world.clear(); }), "passages == 0");
}

TEST_F(InvariantDeathTest, AWalkThatIsLeftByAFaultIsOver) {
    addCamera();
    EXPECT_ANY_THROW(world.walk<Camera>([](Camera&) { throw 0; }));
    world.applyPending();
    EXPECT_NE(world.first<Camera>(), nullptr);
}

TEST_F(InvariantDeathTest, NothingIsDrawnWithoutARenderer) {
    const Texture2D texture;
    EXPECT_DEATH(draw({.texture = texture}), "rendererObjects != nullptr");
    EXPECT_DEATH(setViewProjection({}), "rendererObjects != nullptr");
}

TEST_F(InvariantDeathTest, TypeNumbersStayInTheirTable) {
    EXPECT_DEATH(typeName(static_cast<ObjectType>(objectTypeCount)), "objectTypeCount");
    EXPECT_DEATH(childTypes(static_cast<ObjectType>(-1)), "objectTypeCount");
}

} // namespace

} // namespace dunkman
