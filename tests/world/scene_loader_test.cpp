#include "world/scene_loader.h"

#include <gmock/gmock.h>

#include "assets/catalog_writer.h"
#include "base/fatal.h"
#include "tests/fakes/scratch_folder.h"
#include "tests/world/world_fixture.h"
#include "world/camera.h"
#include "world/movable.h"
#include "world/scene_limits.h"

namespace dunkman {

namespace {

using testing::AllOf;
using testing::HasSubstr;

class SceneLoaderTest : public WorldFixture {
protected:
    SceneLoaderTest() {
        recipes("{crate: {_type: 'Movable', position: [1, 2], tilt: 5}, view: {_type: 'Camera'}}");
        prefabs("{pair: [{recipe: 'crate'}, {recipe: 'crate', tag: 'second', position: [10, 20]}]}");
    }

    static void recipes(std::string_view text) { writable::assetCatalog.recipes = json(text).objectValue(); }
    static void prefabs(std::string_view text) { writable::assetCatalog.prefabs = json(text).objectValue(); }

    static TaggedObjects load(std::string_view text) {
        TaggedObjects tagged = loadGroup(json(text));
        world.applyPending();
        return tagged;
    }

    static std::vector<Vec2> places() {
        std::vector<Vec2> result;
        for (const OwnedObject& object : world.objectsOfType(ObjectType::Movable)) {
            result.push_back(object->position);
        }
        return result;
    }

    static std::string failure(std::string_view text) {
        try {
            loadGroup(json(text));
        } catch (const FatalError& error) {
            return error.what();
        }
        return "the game went on";
    }
};

TEST_F(SceneLoaderTest, ARecipeEntryMakesItsObjectAndFilesItUnderItsTag) {
    const TaggedObjects tagged = load("[{recipe: 'crate', tag: 'first'}]");
    ASSERT_EQ(count(ObjectType::Movable), 1u);
    EXPECT_EQ(places()[0], (Vec2{1.0, 2.0}));
    ASSERT_EQ(tagged.size(), 1u);
    EXPECT_THAT(tagged.at("first"), testing::ElementsAre(world.first<Movable>()));
}

TEST_F(SceneLoaderTest, TheEntrysOwnMembersOverrideTheRecipes) {
    load("[{recipe: 'crate', position: [7, 8]}]");
    EXPECT_EQ(places()[0], (Vec2{7.0, 8.0}));
    EXPECT_EQ(world.first<Movable>()->tilt, 5.0);
}

TEST_F(SceneLoaderTest, ObjectsAreQueuedAndComeInTheOrderOfTheEntries) {
    loadGroup(json(
        "[{recipe: 'crate', position: 3}, {recipe: 'crate', position: 1}, {recipe: 'crate', position: 2}]"));
    EXPECT_EQ(count(ObjectType::Movable), 0u);
    world.applyPending();
    EXPECT_THAT(places(), testing::ElementsAre(Vec2{3, 3}, Vec2{1, 1}, Vec2{2, 2}));
}

TEST_F(SceneLoaderTest, ATagThatIsNoStringIsTheEmptyTag) {
    const TaggedObjects tagged = load("[{recipe: 'crate', tag: 5}, {recipe: 'crate'}]");
    ASSERT_EQ(tagged.size(), 1u);
    EXPECT_EQ(tagged.at("").size(), 2u);
}

TEST_F(SceneLoaderTest, AnEntryWithBothUsesOnlyTheRecipe) {
    load("[{recipe: 'crate', prefab: 'pair'}]");
    EXPECT_EQ(count(ObjectType::Movable), 1u);
}

TEST_F(SceneLoaderTest, ARecipeThatIsNoStringLeavesThePrefab) {
    load("[{recipe: 5, prefab: 'pair'}]");
    EXPECT_EQ(count(ObjectType::Movable), 2u);
}

struct OffsetCase {
    const char* text;
    Vec2 shift;
};

TEST_F(SceneLoaderTest, AnOffsetShiftsEveryObjectOfThePrefab) {
    for (const OffsetCase& row :
         {OffsetCase{"5", {5, 5}}, OffsetCase{"2.5", {2.5, 2.5}}, OffsetCase{"[3, -2]", {3, -2}},
          OffsetCase{"[0.5, 1.5]", {0.5, 1.5}}, OffsetCase{"[1]", {0, 0}}, OffsetCase{"[1, 2, 3]", {0, 0}},
          OffsetCase{"'far'", {0, 0}}, OffsetCase{"[1, 'a']", {1, 0}}, OffsetCase{"['a', 1]", {0, 0}}}) {
        world.clear();
        load(std::string("[{prefab: 'pair', offset: ") + row.text + "}]");
        EXPECT_THAT(places(), testing::ElementsAre(Vec2{1 + row.shift.x, 2 + row.shift.y},
                                                   Vec2{10 + row.shift.x, 20 + row.shift.y}))
            << row.text;
    }
}

TEST_F(SceneLoaderTest, APrefabPlacedTwiceGivesIndependentObjects) {
    load("[{prefab: 'pair', offset: 100}, {prefab: 'pair', offset: [0, -100]}]");
    EXPECT_THAT(places(), testing::ElementsAre(Vec2{101, 102}, Vec2{110, 120}, Vec2{1, -98}, Vec2{10, -80}));
}

TEST_F(SceneLoaderTest, PrefabObjectsKeepTheirInnerTags) {
    const TaggedObjects tagged = load("[{prefab: 'pair', tag: 'outer'}]");
    ASSERT_EQ(tagged.size(), 3u);
    EXPECT_TRUE(tagged.at("outer").empty()); // made, but nothing is filed there
    EXPECT_EQ(tagged.at("").size(), 1u);
    EXPECT_EQ(tagged.at("second").size(), 1u);
}

TEST_F(SceneLoaderTest, OtherMembersOfAPrefabEntryDoNothing) {
    load("[{prefab: 'pair', position: [50, 50], tilt: 9}]");
    EXPECT_EQ(places()[0], (Vec2{1.0, 2.0}));
    EXPECT_EQ(world.first<Movable>()->tilt, 5.0);
}

TEST_F(SceneLoaderTest, OverridesReachTheirTagOnly) {
    const TaggedObjects tagged =
        load("[{prefab: 'pair', overrides: {second: {tilt: 77}, third: {tilt: 88}}}]");
    EXPECT_EQ(static_cast<Movable*>(tagged.at("")[0])->tilt, 5.0);
    EXPECT_EQ(static_cast<Movable*>(tagged.at("second")[0])->tilt, 77.0);
    EXPECT_EQ(tagged.count("third"), 0u);
}

TEST_F(SceneLoaderTest, TheEmptyKeyReachesUntaggedObjects) {
    const TaggedObjects tagged = load(R"([{prefab: 'pair', overrides: {"": {tilt: 77}}}])");
    EXPECT_EQ(static_cast<Movable*>(tagged.at("")[0])->tilt, 77.0);
    EXPECT_EQ(static_cast<Movable*>(tagged.at("second")[0])->tilt, 5.0);
}

TEST_F(SceneLoaderTest, AnOverrideOfThePositionReplacesTheShift) {
    load("[{prefab: 'pair', offset: 100, overrides: {second: {position: [3, 4]}}}]");
    EXPECT_THAT(places(), testing::ElementsAre(Vec2{101, 102}, Vec2{3, 4}));
}

TEST_F(SceneLoaderTest, OverridesOfAnotherKindAreIgnored) {
    load("[{prefab: 'pair', overrides: [1]}, {prefab: 'pair', overrides: {second: 5}}]");
    EXPECT_EQ(count(ObjectType::Movable), 4u);
    EXPECT_EQ(world.first<Movable>()->tilt, 5.0);
}

TEST_F(SceneLoaderTest, NestedPrefabsShiftCumulatively) {
    prefabs("{pair: [{recipe: 'crate'}], row: [{prefab: 'pair', offset: [10, 0]}, {prefab: 'pair', offset: "
            "[20, 0]}]}");
    load("[{prefab: 'row', offset: [100, 5]}]");
    EXPECT_THAT(places(), testing::ElementsAre(Vec2{111, 7}, Vec2{121, 7}));
}

TEST_F(SceneLoaderTest, OverridesOfAnEnclosingPrefabReachInnerTagsLast) {
    prefabs("{pair: [{recipe: 'crate', tag: 'box'}],"
            " row: [{prefab: 'pair', overrides: {box: {tilt: 1, zOffset: 1}}}]}");
    const TaggedObjects tagged = load("[{prefab: 'row', overrides: {box: {tilt: 2}}}]");
    const auto* box = static_cast<Movable*>(tagged.at("box")[0]);
    EXPECT_EQ(box->tilt, 2.0);
    EXPECT_EQ(box->zOffset, 1.0);
}

TEST_F(SceneLoaderTest, OffsetInARecipeEntryIsAPropertyOfTheObject) {
    load("[{recipe: 'view', offset: [3, 4]}]");
    EXPECT_EQ(world.first<Camera>()->offset, (Vec2{3.0, 4.0}));
    EXPECT_EQ(world.first<Camera>()->position, (Vec2{0.0, 0.0}));
}

TEST_F(SceneLoaderTest, AnUnknownRecipeStopsTheGameAndIsNamed) {
    EXPECT_THAT(failure("[{recipe: 'barrel'}]"), HasSubstr("\"barrel\""));
}

TEST_F(SceneLoaderTest, ARecipeThatMakesNothingStopsTheGame) {
    for (const char* recipe : {"{barrel: 5}", "{barrel: {}}", "{barrel: {_type: 'Barrel'}}",
                               "{barrel: {_type: 'Invalid'}}", "{barrel: {_type: 7}}"}) {
        recipes(recipe);
        EXPECT_THAT(failure("[{recipe: 'barrel'}]"),
                    AllOf(HasSubstr("\"barrel\""), HasSubstr("makes no object")));
    }
}

TEST_F(SceneLoaderTest, AnUnknownPrefabStopsTheGameWithItsTag) {
    EXPECT_THAT(failure("[{prefab: 'cabin', tag: 'hut'}]"),
                AllOf(HasSubstr("\"cabin\""), HasSubstr("\"hut\"")));
}

TEST_F(SceneLoaderTest, AnEntryThatNamesNeitherStopsTheGame) {
    EXPECT_THAT(failure("[{tag: 'hut'}]"), HasSubstr("\"hut\""));
    EXPECT_THAT(failure("[{prefab: 5}]"), HasSubstr("neither"));
}

TEST_F(SceneLoaderTest, APrefabThatContainsItselfStopsTheGameAndIsNamed) {
    prefabs("{mirror: [{prefab: 'mirror'}]}");
    EXPECT_THAT(failure("[{prefab: 'mirror'}]"),
                AllOf(HasSubstr("\"mirror\""), HasSubstr("contains itself")));
}

TEST_F(SceneLoaderTest, APrefabThatContainsItselfThroughAnotherStopsTheGame) {
    prefabs("{a: [{prefab: 'b'}], b: [{prefab: 'c'}], c: [{prefab: 'b'}]}");
    EXPECT_THAT(failure("[{prefab: 'a'}]"), AllOf(HasSubstr("\"b\""), HasSubstr("contains itself")));
}

TEST_F(SceneLoaderTest, TheSamePrefabTwiceInAListIsNoCircle) {
    prefabs("{pair: [{recipe: 'crate'}], row: [{prefab: 'pair'}, {prefab: 'pair'}]}");
    load("[{prefab: 'row'}, {prefab: 'row'}]");
    EXPECT_EQ(count(ObjectType::Movable), 4u);
}

TEST_F(SceneLoaderTest, AMessageNamesTheListAndTheEntry) {
    EXPECT_THAT(failure("[{recipe: 'crate'}, {recipe: 'barrel'}]"), HasSubstr("entry 2 of scene.json5"));
    prefabs("{hut: [{recipe: 'crate'}, {recipe: 'crate'}, {recipe: 'barrel'}]}");
    EXPECT_THAT(failure("[{prefab: 'hut'}]"), HasSubstr("entry 3 of the prefab \"hut\" of prefabs.json5"));
    EXPECT_THAT(failure("[{recipe: 'crate'}, {tag: 5}]"), HasSubstr("entry 2 of scene.json5"));
    EXPECT_THAT(failure("[{prefab: 'cabin'}]"), HasSubstr("entry 1 of scene.json5"));
}

TEST_F(SceneLoaderTest, AnUnknownImageIsNamedWithTheEntryThatAsksForIt) {
    EXPECT_THAT(failure("[{recipe: 'crate', imageKey: 'moon'}]"),
                AllOf(HasSubstr("\"moon\""), HasSubstr("\"crate\""), HasSubstr("entry 1 of scene.json5")));
    EXPECT_THAT(failure("[{recipe: 'crate'}, {prefab: 'pair', overrides: {second: {imageKey: 'moon'}}}]"),
                AllOf(HasSubstr("\"moon\""), HasSubstr("overrides for the tag \"second\""),
                      HasSubstr("entry 2 of scene.json5")));
}

// p1 holds the next one, and so on; the last holds `leaf`.
std::string nestedPrefabs(std::size_t depth, const std::string& leaf, int copies = 1) {
    std::string text = "{";
    for (std::size_t level = 1; level <= depth; ++level) {
        text += "p" + std::to_string(level) + ": [";
        for (int copy = 0; copy < copies; ++copy) {
            text += level == depth ? leaf : "{prefab: 'p" + std::to_string(level + 1) + "'},";
        }
        text += "],";
    }
    return text + "}";
}

TEST_F(SceneLoaderTest, PrefabsMayLieAsDeepAsTheBoundAndNoDeeper) {
    prefabs(nestedPrefabs(maxPrefabDepth, "{recipe: 'crate'}"));
    load("[{prefab: 'p1'}]");
    EXPECT_EQ(count(ObjectType::Movable), 1u);
    prefabs(nestedPrefabs(maxPrefabDepth + 1, "{recipe: 'crate'}"));
    EXPECT_THAT(failure("[{prefab: 'p1'}]"),
                AllOf(HasSubstr("\"p65\""), HasSubstr("more than 64 prefabs deep"),
                      HasSubstr("the prefab \"p64\" of prefabs.json5")));
}

TEST_F(SceneLoaderTest, PrefabsFiveThousandDeepAreRefused) {
    prefabs(nestedPrefabs(5000, "{recipe: 'crate'}"));
    EXPECT_THAT(failure("[{prefab: 'p1'}]"), HasSubstr("\"p65\""));
}

TEST_F(SceneLoaderTest, PrefabsThatDoubleThirtyTimesAreRefusedAtOnce) {
    for (const char* leaf : {"{recipe: 'crate'},", ""}) { // also when nothing comes of it all
        prefabs(nestedPrefabs(30, leaf, 2));
        EXPECT_THAT(failure("[{prefab: 'p1'}]"),
                    AllOf(HasSubstr("more than 100000 entries"), HasSubstr("of prefabs.json5")));
        world.clear();
    }
}

TEST_F(SceneLoaderTest, ASceneMayHaveAsManyEntriesAsTheBoundAndNoMore) {
    std::string text = "[";
    for (std::size_t number = 0; number < maxSceneEntries; ++number) {
        text += "{recipe:'crate'},";
    }
    load(text + "]");
    EXPECT_EQ(count(ObjectType::Movable), maxSceneEntries);
    EXPECT_THAT(failure(text + "{recipe:'crate'}]"), HasSubstr("is in scene.json5"));
}

std::vector<JsonKind> mismatches;

TEST_F(SceneLoaderTest, OtherKindsAreReportedAndReadAsEmpty) {
    mismatches.clear();
    jsonKindMismatchHandler = [](const JsonValue&, JsonKind wanted) { mismatches.push_back(wanted); };
    EXPECT_TRUE(loadGroup(json("{a: 1}")).empty());
    EXPECT_THAT(mismatches, testing::ElementsAre(JsonKind::Array));
    EXPECT_THAT(failure("[5]"), HasSubstr("neither"));
    EXPECT_THAT(mismatches, testing::ElementsAre(JsonKind::Array, JsonKind::Object));
    resetJsonKindMismatchHandler();
}

TEST_F(SceneLoaderTest, LoadSceneReadsItsFileIntoTheWorld) {
    const ScratchFolder folder;
    folder.write("scene.json5", "[{recipe: 'crate'}, {prefab: 'pair'}]");
    loadScene();
    EXPECT_EQ(count(ObjectType::Movable), 3u);
}

TEST_F(SceneLoaderTest, AMissingOrMalformedSceneIsEmptyOrPartial) {
    const ScratchFolder folder;
    loadScene();
    EXPECT_EQ(count(ObjectType::Movable), 0u);
    folder.write("scene.json5", "[{recipe: 'crate'}, {recipe: 'crate'} nonsense");
    loadScene();
    EXPECT_EQ(count(ObjectType::Movable), 2u);
}

} // namespace

} // namespace dunkman
