#include <algorithm>

#include <gtest/gtest.h>

#include "app/reset.h"
#include "base/fatal.h"
#include "tests/fakes/small_data.h"
#include "tools/headless/runner.h"
#include "tools/inspect/commands.h"

namespace dunkman {

namespace {

// A sound directory, which each test spoils in one way.
class Inspector : public testing::Test {
protected:
    Inspector() {
        data.write("recipes.json5", R"({"hero":{"_type":"Player"},"camera":{"_type":"Camera"},
"zombie":{"_type":"Zombie"},"crate":{"_type":"Drawable","imageKey":"pineapple"}})");
        data.write("recording.json5", "[]");
        data.write("zombiegame.mp3", "");
        data.write("intro.mp3", "");
    }
    ~Inspector() override { resetProgram(); }

    static std::string faults() {
        std::string out;
        const int status = inspect::printFaults(out);
        EXPECT_EQ(status, out.empty() ? 0 : 1);
        return out;
    }

    std::string json5(std::string_view text) const {
        data.write("value.json5", text);
        std::string out;
        EXPECT_EQ(inspect::printJson5("value.json5", out), 0);
        return out;
    }

    SmallData data;
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
    std::string out;
    inspect::printScene(out);
    EXPECT_TRUE(out.starts_with("object Player x=0x0p+0 ")) << out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2);
}

struct Fault {
    const char* file;
    const char* text;
    const char* expected; // part of the fault that is found
};

class InspectorCheck : public Inspector, public testing::WithParamInterface<Fault> {};

TEST_P(InspectorCheck, Reports) {
    data.write(GetParam().file, GetParam().text);
    EXPECT_NE(faults().find(GetParam().expected), std::string::npos) << faults();
}

INSTANTIATE_TEST_SUITE_P(
    EveryFault, InspectorCheck,
    testing::Values(
        Fault{"scene.json5", "[\n  1 x]", "scene.json5:2:6: Expected ']' instead of 'x'."},
        Fault{"scene.json5", "[", "scene.json5:1:2: The file ends too early."},
        Fault{"scene.json5", "{}", "scene.json5: The top level is no array."},
        Fault{"scene.json5", "[99999999999999999999]", "scene.json5: A number does not fit"},
        Fault{"scene.json5", R"([{"recipe":"camera"}])", "scene.json5: The scene has no Player"},
        Fault{"scene.json5", R"([{"recipe":"hero"}])", "scene.json5: The scene has no Camera"},
        Fault{"scene.json5", R"([{"recipe":"hero", /*c*/ x :1}])", "white space"},
        Fault{"scene.json5", R"([{"recipe":"kraken"}])", "There is no recipe \"kraken\""},
        Fault{"scene.json5", R"([{"prefab":"kraken"}])", "there is no prefab \"kraken\""},
        Fault{"scene.json5", R"([{"tag":"a"}])", "names neither a recipe nor a prefab"},
        Fault{"scene.json5", R"([{"recipe":"hero","heatlh":3}])", "a Player has no property \"heatlh\""},
        Fault{"scene.json5", R"([{"recipe":"hero","health":3.0}])",
              "\"health\" is of a kind that is passed over"},
        Fault{"scene.json5", R"([{"recipe":"crate","imageKey":"kraken"}])", "there is no image \"kraken\""},
        Fault{"prefabs.json5", R"({"a":[{"prefab":"b"}],"b":[{"prefab":"a"}]})",
              "prefab \"a\" contains itself"},
        Fault{"prefabs.json5",
              R"({"a":[{"recipe":"crate","tag":"t"}],"b":[{"prefab":"a","overrides":{"u":{}}}]})",
              "has the tag \"u\""},
        Fault{"recipes.json5", R"({"hero":{"_type":"player"}})", "\"_type\" names no class"},
        Fault{"recipes.json5",
              R"({"hero":{"_type":"Player"},"camera":{"_type":"Camera"},"zombie":{"_type":"Hint"}})",
              "arenas need a Zombie"},
        Fault{"recipes.json5",
              R"({"hero":{"_type":"Player"},"camera":{"_type":"Camera"},"arena":{"_type":"Arena"}})",
              "no recipe \"weakZombie\", which arenas spawn"},
        Fault{"images_compressed.json5", "{}", "The image \"sunset\", which the game needs, is missing"},
        Fault{"AssetsCompressed/Font/Q.dds", "DDS", "AssetsCompressed/Font/Q.dds"},
        Fault{"drawable_sprite.glsl", "/*", "drawable_sprite.glsl"},
        Fault{"drawable_basic.frag", "", "uniform sampler2D uTexture;"},
        Fault{"recording.json5", R"([{"frame":3,"newKeyStates":[]},{"frame":3,"newKeyStates":[]}])",
              "record 1: \"frame\""},
        Fault{"recording.json5", R"([{"frame":3,"newKeyStates":[{"key":65,"state":4}]}])",
              "\"state\" is no number"},
        Fault{"recording.json5", R"([{"frame":3,"newKeyStates":[{"key":1,"state":3}]}])",
              "\"key\" is none of the keys"}));

TEST_F(Inspector, ReportsMissingFiles) {
    for (const char* file :
         {"recipes.json5", "zombiegame.mp3", "drawable_basic.vert", "AssetsCompressed/Font/Z.dds"}) {
        data.remove(file);
        EXPECT_NE(faults().find(file), std::string::npos) << file;
    }
}

} // namespace

} // namespace dunkman
