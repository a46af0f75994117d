#include <set>

#include "render/image_table_writer.h"
#include "tests/world/world_fixture.h"
#include "world/drawable.h"
#include "world/object_class.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

// A class with one field of every kind, as a list would have them.
class Sample : public Drawable {
public:
    double number = 1.5;
    std::int32_t whole = 2;
    bool flag = true;
    std::string text = "t";
    Vec2 pair{3.0, 4.0};
    Timer timer{0.5, true, 0.25};
};

TEST(Fields, TheKindComesFromTheMember) {
    EXPECT_EQ(field<&Sample::number>("", "").kind, FieldKind::Number);
    EXPECT_EQ(field<&Sample::whole>("", "").kind, FieldKind::WholeNumber);
    EXPECT_EQ(field<&Sample::flag>("", "").kind, FieldKind::Flag);
    EXPECT_EQ(field<&Sample::text>("", "").kind, FieldKind::Text);
    EXPECT_EQ(field<&Sample::pair>("", "").kind, FieldKind::Pair);
    EXPECT_EQ(field<&Sample::timer>("", "").kind, FieldKind::Timer);
}

TEST(Fields, AFieldReadsAndWritesItsMember) {
    Sample sample;
    const Field whole = field<&Sample::whole>("whole", "");
    EXPECT_EQ(whole.write(sample).intValue(), 2);
    whole.read(sample, json("7"));
    EXPECT_EQ(sample.whole, 7);
    whole.read(sample, json("8.0"));
    EXPECT_EQ(sample.whole, 7);
}

TEST(Fields, ReadingATimerStopsIt) {
    Sample sample;
    field<&Sample::timer>("timer", "").read(sample, json("2"));
    EXPECT_EQ(sample.timer.duration, 2.0);
    EXPECT_FALSE(sample.timer.running);
    EXPECT_EQ(sample.timer.elapsed, 0.0);
}

TEST(Fields, AClassHasItsAncestorsFieldsToo) {
    EXPECT_EQ(findField(ObjectType::Zombie, "attackDelay")->kind, FieldKind::Number);
    EXPECT_EQ(findField(ObjectType::Zombie, "health")->kind, FieldKind::WholeNumber);
    EXPECT_EQ(findField(ObjectType::Zombie, "position")->kind, FieldKind::Pair);
    EXPECT_EQ(findField(ObjectType::Walker, "attackDelay"), nullptr);
    EXPECT_EQ(findField(ObjectType::Zombie, "heatlh"), nullptr);
    EXPECT_EQ(findField(ObjectType::Invalid, "position"), nullptr);
}

TEST(Fields, EveryFieldHasAKeyOfItsOwnAndAMeaning) {
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        std::set<std::string_view> keys = {"_type", "recipe", "tag"};
        for (const ObjectType ancestor : lineage(type)) {
            for (const Field& listed : classOf(ancestor).fields) {
                EXPECT_TRUE(keys.insert(listed.key).second) << typeName(type) << ' ' << listed.key;
                EXPECT_FALSE(listed.meaning.empty()) << listed.key;
                EXPECT_EQ(listed.meaning.find('\n'), std::string_view::npos) << listed.key;
            }
        }
        EXPECT_FALSE(classOf(type).meaning.empty()) << typeName(type);
    }
}

class ClassImages : public WorldFixture {};

TEST_F(ClassImages, AreAllThatTheConstructorsLookUp) {
    writable::pictures.imageTable.clear();
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        for (const std::string_view key : classOf(type).images) {
            addImage(key, 10, 10);
        }
        EXPECT_TRUE(createObject(type)) << typeName(type); // stops with a message when a picture is missing
        writable::pictures.imageTable.clear();
    }
}

} // namespace

} // namespace dunkman
