#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "json5/reader.h"
#include "render/image_table_writer.h"
#include "tools/inspect/commands.h"
#include "tools/reference/class_defaults.h"
#include "world/object_class.h"

// The reference and the schemas are committed, so that they can be read without building anything. With the environment
// variable DUNKMAN_UPDATE_EXPECTED set, the files are written instead; read the difference before it is committed.
namespace dunkman {

namespace {

std::string readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void expectCommitted(const std::string& path, const std::string& text) {
    if (std::getenv("DUNKMAN_UPDATE_EXPECTED") != nullptr) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << text;
        GTEST_SKIP() << path << " written";
    }
    EXPECT_EQ(readText(path), text) << path << " is not what the lists of the classes say";
}

std::string schema(const std::string& name) {
    std::string text;
    EXPECT_EQ(inspect::printSchema(name, text), 0);
    return text;
}

TEST(Reference, IsWhatTheListsOfTheClassesSay) {
    std::string text;
    inspect::printReference(text);
    expectCommitted("docs/data-reference.md", text);
}

class Schema : public testing::TestWithParam<const char*> {};

TEST_P(Schema, IsWhatTheListsOfTheClassesSay) {
    expectCommitted("docs/schema/" + std::string(GetParam()) + ".schema.json", schema(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Every, Schema, testing::Values("objects", "recipes", "prefabs", "scene"),
                         [](const auto& name) { return std::string(name.param); });

TEST(Schemas, KnowEveryFieldOfEveryClassAndNoOther) {
    JsonValue objects;
    Json5Report report;
    parseDocument(schema("objects") + ' ', report, objects);
    ASSERT_EQ(report.code, Json5Error::None);
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        const JsonValue& described = objects.get("definitions").get(typeName(type)).get("properties");
        const JsonValue written = reference::defaultsOf(type);
        EXPECT_EQ(described.objectValue().size(), written.objectValue().size()) << typeName(type);
        for (const JsonMember& member : written.objectValue()) {
            EXPECT_TRUE(described.contains(member.key())) << typeName(type) << ' ' << member.key();
        }
    }
}

TEST(Schemas, ThereAreNoOthers) {
    std::string text;
    EXPECT_EQ(inspect::printSchema("kraken", text), 1);
    EXPECT_EQ(text, "");
}

TEST(Defaults, AreTheConstructors) {
    EXPECT_EQ(reference::plainText(reference::defaultsOf(ObjectType::Player).get("health")), "5");
    EXPECT_EQ(reference::plainText(reference::defaultsOf(ObjectType::Projectile).get("acceleration")),
              "[0, -9.81]");
    EXPECT_EQ(reference::plainText(reference::defaultsOf(ObjectType::Pineapple).get("attackTimeout")), "1");
}

TEST(Defaults, TellWhoseWidthFollowsItsPicture) {
    EXPECT_TRUE(reference::widthFollowsPicture(ObjectType::Flamingo));
    EXPECT_TRUE(reference::widthFollowsPicture(ObjectType::Player));
    EXPECT_FALSE(reference::widthFollowsPicture(ObjectType::Weapon));
    EXPECT_FALSE(reference::widthFollowsPicture(ObjectType::Arena));
}

TEST(Defaults, LeaveTheImageTableAsItWas) {
    writable::pictures.imageTable["box"].width = 7;
    reference::defaultsOf(ObjectType::Zombie);
    EXPECT_EQ(pictures.imageTable.size(), 1u);
    EXPECT_EQ(pictures.imageTable.at("box").width, 7u);
    writable::pictures = {};
}

} // namespace

} // namespace dunkman
