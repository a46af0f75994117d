#include "tools/inspect/source_map.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "json5/reader.h"
#include "tests/tools/source_shape.h"

namespace dunkman::inspect {

namespace {

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void expectShape(const std::string& text) {
    JsonValue value;
    Json5Report report;
    parseDocument(text + ' ', report, value);
    ASSERT_EQ(report.code, Json5Error::None) << text;
    EXPECT_TRUE(hasShapeOf(mapSource(text).top, value, text)) << text;
}

TEST(SourceMap, KnowsWhereEachValueStands) {
    const SourceMap map = mapSource("{\"a\": [1, {b:true}],\n\"c\": 'x'}");
    ASSERT_EQ(map.top.members.size(), 2u);
    const SourceMember& first = map.top.members[0];
    EXPECT_EQ(first.keyOffset, 1u);
    EXPECT_EQ(first.value.offset, 6u);
    EXPECT_EQ(first.value.elements.at(0).offset, 7u);
    EXPECT_EQ(first.value.elements.at(1).members.at(0).value.offset, 13u);
    EXPECT_EQ(map.top.members[1].keyOffset, 21u);
    EXPECT_EQ(map.top.members[1].value.offset, 26u);
}

TEST(SourceMap, AgreesWithTheReaderOnItsHabits) {
    for (const char* text :
         {"{a : 1, b:2}", "{// c\n  a:1}", "{// c\n// d\n\"a\":1}", "[1, /*a*/ /*b*/2, /*c*/3]",
          "{\"a\":[1],\"a\":[2,3]}", "{\"a\":{\"b\":1},\"a\":{\"c\":2},\"a\":3}",
          "[\"x\\x41\\x42b\", 'y\\'z', \"\\\r\nq\", \"\\\n\\q\"]", "{\"\\x41b\":1}",
          "[0x10, -0X1f, NaN, -Infinity, .5, 5., 1e3,]", "[true,false,null,]", "'x'", "{'a':1}",
          "/**/ /***/[]", "{}//", "[]/* no end"}) {
        expectShape(text);
    }
}

TEST(SourceMap, AgreesWithTheReaderOnEveryShippedFile) {
    for (const char* name : {"images_compressed", "recipes", "prefabs", "scene", "recording"}) {
        const std::string text = textOf(std::string("data/") + name + ".json5");
        ASSERT_FALSE(text.empty());
        expectShape(text);
    }
}

TEST(SourceMap, NotesRepeatedKeysHexadecimalNumbersAndOpenComments) {
    const SourceMap map = mapSource(R"({"a":0x1,"b":2,"a":{"c":1,"c":2}} /* )");
    ASSERT_EQ(map.repeatedKeys.size(), 1u);
    EXPECT_EQ(map.repeatedKeys[0].key, "a");
    EXPECT_EQ(map.repeatedKeys[0].offset, 15u);
    EXPECT_EQ(map.repeatedKeys[0].firstOffset, 1u);
    EXPECT_EQ(map.hexNumbers, (std::vector<std::size_t>{5}));
    EXPECT_EQ(map.openComment, 34u);
    EXPECT_EQ(map.unreadableNumber, std::nullopt);
}

TEST(SourceMap, NotesTheFirstNumberThatTheReaderThrowsAt) {
    EXPECT_EQ(mapSource("[1, 1e400, 99999999999999999999, 1e99999]").unreadableNumber, 11u);
    EXPECT_EQ(mapSource("[1e-99999]").unreadableNumber, 1u);
}

TEST(SourceMap, GoesNoDeeperThanTheReader) {
    const std::string text(100'000, '[');
    EXPECT_EQ(mapSource(text).top.offset, 0u);
}

} // namespace

} // namespace dunkman::inspect
