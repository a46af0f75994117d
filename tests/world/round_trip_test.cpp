#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

#include "json5/canonical.h"
#include "tests/world/world_fixture.h"
#include "world/object_class.h"

namespace dunkman {

namespace {

class RoundTripTest : public WorldFixture, public testing::WithParamInterface<ObjectType> {
protected:
    double number() { return std::uniform_real_distribution<double>(-100.0, 100.0)(generator); }

    // Another value of the same kind for every key but the type.
    JsonValue randomised(const JsonValue& original) {
        JsonValue value = original;
        for (const JsonMember& entry : original.objectValue()) {
            JsonValue& member = value.member(entry.key());
            if (entry.key() == "_type") {
                continue;
            }
            if (entry.key() == "imageKey") {
                const char* names[] = {"", "box", "zombie", "flamingo"};
                member = JsonValue::makeString(names[generator() % 4]);
                continue;
            }
            switch (member.kind) {
            case JsonKind::Bool:
                member.setBool(generator() % 2 == 0);
                break;
            case JsonKind::Integer:
                member.setInteger(static_cast<std::int32_t>(generator()));
                break;
            case JsonKind::Float:
                member.setFloat(number());
                break;
            case JsonKind::Array:
                member = JsonValue::makePair(number(), number());
                break;
            default:
                ADD_FAILURE() << entry.key() << " is of no kind that objects write";
            }
        }
        return value;
    }

    std::mt19937 generator{20240607};
};

TEST_P(RoundTripTest, WritesItsKeysInTheOrderOfItsFamily) {
    std::vector<std::string> written;
    const JsonValue value = createObject(GetParam())->writeProperties();
    for (const JsonMember& member : value.objectValue()) {
        written.emplace_back(member.key());
    }
    std::vector<std::string> listed = {"_type"};
    for (const ObjectType ancestor : lineage(GetParam())) {
        for (const Field& field : classOf(ancestor).fields) {
            listed.push_back(std::string(field.key));
        }
    }
    EXPECT_EQ(written, listed);
    EXPECT_EQ(value.get("_type").stringValue(), typeName(GetParam()));
}

TEST_P(RoundTripTest, ReadsBackWhatItWrote) {
    const JsonValue defaults = createObject(GetParam())->writeProperties();
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
    const JsonValue defaults = createObject(GetParam())->writeProperties();
    const JsonValue wanted = randomised(defaults);
    for (const JsonMember& entry : wanted.objectValue()) {
        JsonValue alone = JsonValue::makeObject();
        alone.member("_type") = wanted.get("_type");
        alone.member(entry.key()) = entry.value;
        JsonValue expected = defaults;
        expected.member(entry.key()) = entry.value;
        EXPECT_EQ(canonicalText(createFromValue(alone)->writeProperties()), canonicalText(expected))
            << entry.key();
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, RoundTripTest, testing::ValuesIn(subtypeWalk(ObjectType::Object)),
                         [](const auto& chosen) { return std::string(typeName(chosen.param)); });

TEST(RoundTripTypes, EveryClassIsCovered) {
    EXPECT_EQ(subtypeWalk(ObjectType::Object).size(), objectTypeCount - 1);
}

} // namespace

} // namespace dunkman
