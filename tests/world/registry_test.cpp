#include "world/registry.h"

#include <set>
#include <typeindex>

#include "tests/world/world_fixture.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

class RegistryTest : public WorldFixture {};

TEST_F(RegistryTest, EveryTypeNumberCreatesItsClass) {
    std::set<std::type_index> classes;
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        const auto type = static_cast<ObjectType>(number);
        const OwnedObject object = createObject(type);
        ASSERT_TRUE(object);
        const Object& made = *object;
        EXPECT_EQ(made.getType(), type) << typeName(type);
        EXPECT_TRUE(classes.insert(typeid(made)).second) << typeName(type);
    }
}

TEST_F(RegistryTest, InvalidCreatesNothing) { EXPECT_FALSE(createObject(ObjectType::Invalid)); }

TEST_F(RegistryTest, DestroyAcceptsNothing) { destroyObject(nullptr); }

TEST_F(RegistryTest, FreesEveryClassWithItsStrings) {
    // The sanitized run finds a wrong release, a leak or a size that does not fit.
    const std::string key = "an image key that is too long to be kept inside of the string object itself";
    addImage(key, 32, 32);
    JsonValue properties = JsonValue::makeObject();
    properties.member("imageKey") = JsonValue::makeString(key);
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        const OwnedObject object = createObject(static_cast<ObjectType>(number));
        object->readProperties(properties);
        const JsonValue saved = object->writeProperties();
        EXPECT_TRUE(!saved.contains("imageKey") || saved.get("imageKey").stringValue() == key);
    }
}

TEST_F(RegistryTest, AValueMakesAnObjectWithItsProperties) {
    const OwnedObject object =
        createFromValue(json("{_type: 'Zombie', position: [3, 4], health: 7, unknown: 1}"));
    ASSERT_TRUE(object);
    ASSERT_EQ(object->getType(), ObjectType::Zombie);
    EXPECT_EQ(object->position, (Vec2{3.0, 4.0}));
    EXPECT_EQ(static_cast<Zombie&>(*object).health, 7);
}

TEST_F(RegistryTest, APlainObjectCanBeMade) {
    const OwnedObject object = createFromValue(json("{_type: 'Object'}"));
    ASSERT_TRUE(object);
    EXPECT_EQ(object->getType(), ObjectType::Object);
}

TEST_F(RegistryTest, AnythingElseMakesNothing) {
    for (const char* text : {"{_type: 'zombie'}", "{_type: 'Invalid'}", "{_type: 11}", "{_type: ['Zombie']}",
                             "{position: 1}", "['Zombie']", "'Zombie'", "null", "11"}) {
        EXPECT_FALSE(createFromValue(json(text))) << text;
    }
}

} // namespace

} // namespace dunkman
