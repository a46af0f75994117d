#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

#include "json5/canonical.h"
#include "tests/world/world_fixture.h"

namespace dunkman {

namespace {

using Keys = std::vector<std::string>;

Keys operator+(Keys first, const Keys& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const Keys objectKeys = {"_type", "position", "size"};
const Keys drawableKeys =
    objectKeys + Keys{"imageKey",   "mirrorX", "mirrorY", "isFlat", "isUI",  "gamma",   "gain",
                      "saturation", "tintR",   "tintG",   "tintB",  "pivot", "zOffset", "tilt"};
const Keys movableKeys =
    drawableKeys + Keys{"autoMirror", "inverseMirror", "friction", "acceleration", "velocity"};
const Keys weaponKeys = movableKeys + Keys{"attackTimeout",   "timeoutAnimationPercentage",
                                           "attackArc",       "handPivot",
                                           "animationAngle",  "collisionPivot",
                                           "collisionRadius", "damage",
                                           "durability"};
const Keys rangedWeaponKeys = weaponKeys + Keys{"initialVelocity"};
const Keys walkerKeys = movableKeys + Keys{"walkAnimation", "health", "invulnerableTimer"};
const Keys zombieKeys = walkerKeys + Keys{"attackRateTimer", "searchRadius", "attackDelay"};
const Keys cameraKeys = objectKeys + Keys{"offset"};
const Keys arenaKeys =
    objectKeys + Keys{"spawnsRemaining", "maxSimultaneousZombies", "zombieTimer", "enemyVariant"};

struct TypeCase {
    ObjectType type;
    const Keys& keys;
};

const std::vector<TypeCase> typeCases = {
    {ObjectType::Object, objectKeys},          {ObjectType::Drawable, drawableKeys},
    {ObjectType::Movable, movableKeys},        {ObjectType::Interactable, movableKeys},
    {ObjectType::Weapon, weaponKeys},          {ObjectType::Flamingo, weaponKeys},
    {ObjectType::Projectile, movableKeys},     {ObjectType::RangedWeapon, rangedWeaponKeys},
    {ObjectType::Pineapple, rangedWeaponKeys}, {ObjectType::Walker, walkerKeys},
    {ObjectType::Zombie, zombieKeys},          {ObjectType::ZombieDead, drawableKeys},
    {ObjectType::Player, walkerKeys},          {ObjectType::Camera, cameraKeys},
    {ObjectType::SpawnPoint, objectKeys},      {ObjectType::Arena, arenaKeys},
    {ObjectType::ResortSign, drawableKeys},    {ObjectType::Wave, drawableKeys},
    {ObjectType::Hint, drawableKeys},
};

class RoundTripTest : public WorldFixture, public testing::WithParamInterface<TypeCase> {
protected:
    double number() { return std::uniform_real_distribution<double>(-100.0, 100.0)(generator); }

    // Another value of the same kind for every key but the type.
    JsonValue randomised(const JsonValue& original) {
        JsonValue value = original;
        for (const JsonMember& entry : original.objectValue) {
            JsonValue& member = value.member(entry.key);
            if (entry.key == "_type") {
                continue;
            }
            if (entry.key == "imageKey") {
                const char* names[] = {"", "box", "zombie", "flamingo"};
                member = JsonValue::makeString(names[generator() % 4]);
                continue;
            }
            switch (member.kind) {
            case JsonKind::Bool:
                member.boolValue = generator() % 2 == 0;
                break;
            case JsonKind::Integer:
                member.intValue = static_cast<std::int32_t>(generator());
                break;
            case JsonKind::Float:
                member.floatValue = number();
                break;
            case JsonKind::Array:
                member = JsonValue::makePair(number(), number());
                break;
            default:
                ADD_FAILURE() << entry.key << " is of no kind that objects write";
            }
        }
        return value;
    }

    std::mt19937 generator{20240607};
};

TEST_P(RoundTripTest, WritesItsKeysInTheOrderOfItsFamily) {
    Keys written;
    const JsonValue value = createObject(GetParam().type)->writeProperties();
    for (const JsonMember& member : value.objectValue) {
        written.push_back(member.key);
    }
    EXPECT_EQ(written, GetParam().keys);
    EXPECT_EQ(value.get("_type").stringValue, typeName(GetParam().type));
}

TEST_P(RoundTripTest, ReadsBackWhatItWrote) {
    const JsonValue defaults = createObject(GetParam().type)->writeProperties();
    for (int round = 0; round < 200; ++round) {
        const JsonValue wanted = randomised(defaults);
        const OwnedObject first = createFromValue(wanted);
        ASSERT_TRUE(first);
        const JsonValue saved = first->writeProperties();
        ASSERT_EQ(canonicalText(saved), canonicalText(wanted));
        const OwnedObject second = createFromValue(saved);
        ASSERT_EQ(canonicalText(second->writeProperties()), canonicalText(wanted));
        ASSERT_EQ(second->getBounds(), first->getBounds());
    }
}

TEST_P(RoundTripTest, EveryKeyIsOptional) {
    const JsonValue defaults = createObject(GetParam().type)->writeProperties();
    const JsonValue wanted = randomised(defaults);
    for (const JsonMember& entry : wanted.objectValue) {
        JsonValue alone = JsonValue::makeObject();
        alone.member("_type") = wanted.get("_type");
        alone.member(entry.key) = entry.value;
        JsonValue expected = defaults;
        expected.member(entry.key) = entry.value;
        EXPECT_EQ(canonicalText(createFromValue(alone)->writeProperties()), canonicalText(expected))
            << entry.key;
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, RoundTripTest, testing::ValuesIn(typeCases),
                         [](const auto& chosen) { return std::string(typeName(chosen.param.type)); });

TEST(RoundTripTypes, AllNineteenAreCovered) {
    ASSERT_EQ(typeCases.size(), objectTypeCount - 1);
    for (std::size_t number = 0; number < typeCases.size(); ++number) {
        EXPECT_EQ(indexOf(typeCases[number].type), number + 1);
    }
}

} // namespace

} // namespace dunkman
