#include "world/object.h"

#include "tests/world/world_fixture.h"
#include "world/spawn_point.h"

namespace dunkman {

namespace {

class ObjectTest : public WorldFixture {};

TEST_F(ObjectTest, StandsAtTheOriginWithUnitSizeByDefault) {
    const OwnedObject object = createObject(ObjectType::Object);
    EXPECT_EQ(object->position, (Vec2{0.0, 0.0}));
    EXPECT_EQ(object->size, (Vec2{1.0, 1.0}));
    EXPECT_EQ(object->getType(), ObjectType::Object);
}

TEST_F(ObjectTest, BoundsBeginAtThePosition) {
    const OwnedObject object = createObject(ObjectType::Object);
    object->position = {10.0, 5.0};
    object->size = {2.0, 4.0};
    EXPECT_EQ(object->getBounds(), (Rect{10.0, 5.0, 12.0, 9.0}));
}

TEST_F(ObjectTest, ReadsPositionAndSizeAsPairsOrNumbers) {
    const OwnedObject object = createObject(ObjectType::Object);
    object->readProperties(json("{position: [3, -4.5], size: 2.0}"));
    EXPECT_EQ(object->position, (Vec2{3.0, -4.5}));
    EXPECT_EQ(object->size, (Vec2{2.0, 2.0}));
}

TEST_F(ObjectTest, ASecondReadingOverlaysTheFirst) {
    const OwnedObject object = createObject(ObjectType::Object);
    object->readProperties(json("{position: [3, 4], size: [5, 6]}"));
    object->readProperties(json("{position: 7}"));
    EXPECT_EQ(object->position, (Vec2{7.0, 7.0}));
    EXPECT_EQ(object->size, (Vec2{5.0, 6.0}));
}

TEST_F(ObjectTest, UnknownKeysAreIgnored) {
    const OwnedObject object = createObject(ObjectType::Object);
    object->readProperties(json("{_type: 'Zombie', nonsense: [1, 2, 3]}"));
    EXPECT_EQ(object->getType(), ObjectType::Object);
    EXPECT_EQ(object->position, (Vec2{0.0, 0.0}));
}

TEST_F(ObjectTest, WritesItsTypeNameAndBothPairs) {
    const OwnedObject object = createObject(ObjectType::SpawnPoint);
    object->position = {1.5, 2.0};
    const JsonValue value = object->writeProperties();
    ASSERT_EQ(value.kind, JsonKind::Object);
    EXPECT_EQ(value.objectValue().size(), 3u);
    EXPECT_EQ(value.get("_type").stringValue(), "SpawnPoint");
    ASSERT_EQ(value.get("position").arrayValue().size(), 2u);
    EXPECT_EQ(value.get("position").arrayValue()[0].kind, JsonKind::Float);
    EXPECT_EQ(value.get("position").arrayValue()[0].floatValue(), 1.5);
    EXPECT_EQ(value.get("size").arrayValue()[1].floatValue(), 1.0);
}

} // namespace

} // namespace dunkman
