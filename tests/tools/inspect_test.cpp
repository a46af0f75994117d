#include <algorithm>

#include <gtest/gtest.h>

#include "app/reset.h"
#include "base/fatal.h"
#include "screens/screen.h"
#include "tests/tools/broken_example.h"
#include "tools/inspect/commands.h"
#include "tools/inspect/data_check.h"
#include "world/player.h"
#include "world/world.h"

namespace dunkman {

namespace {

// A sound directory, which each test spoils in one way.
class Inspector : public testing::Test {
protected:
    ~Inspector() override { resetProgram(); }

    static std::string faults() {
        std::string out;
        std::string notes;
        const int status = inspect::printFaults(out, notes);
        EXPECT_EQ(status, out.empty() ? 0 : 1);
        return out;
    }

    std::string json5(std::string_view text) const {
        data.write("value.json5", text);
        std::string out;
        EXPECT_EQ(inspect::printJson5("value.json5", out), 0);
        return out;
    }

    GoodData data;
};

TEST_F(Inspector, FindsNothingWrongWithASoundDirectory) { EXPECT_EQ(faults(), ""); }

TEST_F(Inspector, PrintsCodeMessagePositionAndValue) {
    EXPECT_EQ(json5("{a:1} x"), "code 2\n"
                                "message \"Unexpected 'x' after value. Expected end of file.\"\n"
                                "position 7 0 7 0\n"
                                "value {\"a\":1}\n");
}

TEST_F(Inspector, PrintsNothingButTheExceptionWhenTheReaderThrows) {
    EXPECT_EQ(json5("[99999999999999999999]"), "exception stoll argument out of range\n");
}

TEST_F(Inspector, PrintsAValueAsTheGameWritesIt) {
    data.write("value.json5", "{a:[1,{}],b:2.0}");
    std::string out;
    inspect::printWritten("value.json5", 4, out);
    EXPECT_EQ(out, "{\n    \"a\": [1,{        }], \n    \"b\": 2.0\n}");
}

TEST_F(Inspector, PrintsTheLevelsOfATexture) {
    std::string out;
    inspect::printDds("AssetsCompressed/Font/A.dds", out);
    EXPECT_EQ(out, "texture 4 8 levels=1\nlevel 0 4 8 bytes=16 offset=0\n");
}

TEST_F(Inspector, PrintsTheSceneRightAfterLoading) {
    data.write("scene.json5", R"([{"recipe":"hero"},{"recipe":"camera"}])");
    std::string out;
    inspect::printScene(out);
    EXPECT_TRUE(out.starts_with("object Player x=0x0p+0 ")) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2);
}

TEST_F(Inspector, TellsFaultsFileByFileFromTopToBottom) {
    data.write("scene.json5", R"([{"recipe":"heroo"},
{"recipe":"camera","health":1}, {"recipe":"kamera"}])");
    data.write("prefabs.json5", "{}");
    data.write("recipes.json5", R"({"hero":{"_type":"Player","healt":3},"camera":{"_type":"Camera"}})");
    EXPECT_EQ(faults(),
              R"(recipes.json5:1:27: recipe "hero": Player has no property "healt". Is "health" meant?
scene.json5:1:12: entry 1 (recipe "heroo"): there is no such recipe in recipes.json5. Is "hero" meant?
scene.json5:2:20: entry 2 (recipe "camera"): Camera has no property "health".
scene.json5:2:43: entry 3 (recipe "kamera"): there is no such recipe in recipes.json5. Is "camera" meant?
)");
}

// What names something in a file that cannot be read is not wrong for that.
TEST_F(Inspector, TellsOneSyntaxFaultAndNothingThatFollowsFromIt) {
    data.write("recipes.json5", R"({"hero":{"_type":"Player"},"camera":{"_type":"Camera"})");
    data.write("images_compressed.json5", R"({"sunset":})");
    data.write("scene.json5",
               R"([{"recipe":"hero","imageKey":"box"},{"recipe":"camera"},{"recipe":"zombie"}])");
    EXPECT_EQ(
        faults(),
        R"(images_compressed.json5:1:11: Here is no value: a number, a text in quotes, true, false, null, [ or {.
recipes.json5:1:55: The file ends too early: a bracket or quote is still open.
)");
}

// A scripted fight at x = 5 with one spawn point, beside the entries.
std::string scriptedFight(const std::string& entries, const std::string& pointX) {
    return "[" + entries + R"({"recipe":"arena","position":[5,0],"enemyVariant":4},
{"recipe":"spawnPoint","position":[)" +
           pointX + ",1]}]";
}

TEST_F(Inspector, KnowsThatTheCameraFollowsTheHeroToAScriptedFight) {
    const std::string entries = R"({"recipe":"hero","position":[-8,0]},{"recipe":"camera"},)";
    data.write("scene.json5", scriptedFight(entries, "12.8"));
    EXPECT_EQ(faults(), "");
    data.write("scene.json5", scriptedFight(entries, "12.9"));
    EXPECT_NE(faults().find("scene.json5:1:58: entry 3: the scripted fight that starts at x = 5"),
              std::string::npos);
}

TEST_F(Inspector, KnowsThatTheCameraIsNotYetThereWhenTheHeroBeginsBehindTheLine) {
    const std::string entries = R"({"recipe":"hero","position":[7,0]},{"recipe":"camera","position":[2,0]},)";
    data.write("scene.json5", scriptedFight(entries, "9.8"));
    EXPECT_EQ(faults(), "");
    data.write("scene.json5", scriptedFight(entries, "9.9"));
    EXPECT_NE(faults().find("the scripted fight that starts at x = 5"), std::string::npos);
}

TEST_F(Inspector, KnowsThatAnotherFightMayHoldTheCameraWhenAScriptedOneStarts) {
    const std::string entries =
        R"({"recipe":"hero","position":[-8,0]},{"recipe":"camera"},{"recipe":"arena","position":[0.5,0],"size":[4,1]},)";
    data.write("scene.json5", scriptedFight(entries, "10.3"));
    EXPECT_EQ(faults(), "");
    data.write("scene.json5", scriptedFight(entries, "10.4"));
    EXPECT_NE(faults().find("the scripted fight that starts at x = 5"), std::string::npos);
}

// As many prefabs as `depth`, each with `copies` of the next and the last with a crate.
std::string nestedPrefabs(int depth, int copies) {
    std::string text = "{";
    for (int level = 1; level < depth; ++level) {
        text += "\"p" + std::to_string(level) + "\":[";
        for (int copy = 0; copy < copies; ++copy) {
            text += "{\"prefab\":\"p" + std::to_string(level + 1) + "\"},";
        }
        text += "],\n";
    }
    return text + "\"p" + std::to_string(depth) + "\":[{\"recipe\":\"parasol\"}]}";
}

TEST_F(Inspector, TellsPrefabsThatLieTooDeep) {
    data.write("scene.json5", R"([{"recipe":"hero"},{"recipe":"camera"},{"prefab":"p1"}])");
    data.write("prefabs.json5", nestedPrefabs(64, 1));
    EXPECT_EQ(faults(), "");
    data.write("prefabs.json5", nestedPrefabs(5000, 1));
    EXPECT_EQ(faults(),
              "prefabs.json5:4936:1: prefab \"p4936\": it has more than 64 prefabs within prefabs.\n");
}

TEST_F(Inspector, TellsPrefabsThatDoubleUntilTheyAreTooManyAtOnce) {
    data.write("scene.json5", R"([{"recipe":"hero"},{"recipe":"camera"},{"prefab":"p1"}])");
    data.write("prefabs.json5", nestedPrefabs(40, 2));
    EXPECT_EQ(faults(), "prefabs.json5:24:1: prefab \"p24\": with the prefabs in it, it has more than 100000 "
                        "entries.\n");
    data.write("scene.json5", R"([{"recipe":"hero"},{"recipe":"camera"},{"prefab":"p1"},{"prefab":"p1"}])");
    data.write("prefabs.json5", nestedPrefabs(16, 2)); // 98302 entries
    EXPECT_EQ(faults(), "scene.json5:1:1: With the prefabs in it the scene has more than 100000 entries.\n");
}

TEST_F(Inspector, SaysThatShadersWereNotCompiledWhereThereIsNoCompiler) {
    data.write("drawable_basic.frag", data.read("drawable_basic.frag") + "nonsense");
    const inspect::CheckResult result = inspect::checkData({"no-such-compiler-anywhere"});
    EXPECT_TRUE(result.faults.empty());
    ASSERT_EQ(result.notes.size(), 1u);
    EXPECT_NE(result.notes[0].find("were not compiled"), std::string::npos);
}

TEST_F(Inspector, LeavesTheProgramAsAFreshOne) {
    EXPECT_EQ(faults(), "");
    EXPECT_EQ(screenState.currentScreen, nullptr);
    EXPECT_EQ(world.first<Player>(), nullptr);
}

} // namespace

} // namespace dunkman
