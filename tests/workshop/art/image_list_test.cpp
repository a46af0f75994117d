#include "json5/reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace dunkman {

namespace {

namespace fs = std::filesystem;

/// What the game will know: the list as the game's own reader sees it.
JsonValue readList() {
    JsonValue list;
    Json5Report report;
    list = parseFile("data/images_compressed.json5", report);
    EXPECT_TRUE(report.code == Json5Error::None || report.code == Json5Error::EndOfInput) << report.message;
    return list;
}

std::string textOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::set<std::string> drawingKeys() {
    std::set<std::string> keys;
    for (const fs::directory_entry& entry : fs::directory_iterator("workshop/art/images")) {
        if (entry.path().extension() == ".svg") {
            keys.insert(entry.path().stem().string());
        }
    }
    return keys;
}

std::uint32_t wordAt(const std::string& bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        word |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(offset + byte))) << (8 * byte);
    }
    return word;
}

std::uint32_t sideOf(const std::string& svg, const std::string& name) {
    std::smatch found;
    const std::regex attribute("<svg[^>]*\\s" + name + "=\"([0-9]+)\"");
    return std::regex_search(svg, found, attribute) ? static_cast<std::uint32_t>(std::stoul(found[1])) : 0;
}

/// A complete DXT1 texture of the size that its drawing states.
void expectTexture(const fs::path& texture, const fs::path& drawing) {
    SCOPED_TRACE(texture.string());
    const std::string bytes = textOf(texture);
    const std::string svg = textOf(drawing);
    ASSERT_GT(bytes.size(), 128U);
    EXPECT_EQ(bytes.substr(0, 4), "DDS ");
    EXPECT_EQ(bytes.substr(84, 4), "DXT1");
    std::uint32_t height = wordAt(bytes, 12);
    std::uint32_t width = wordAt(bytes, 16);
    EXPECT_EQ(width, sideOf(svg, "width"));
    EXPECT_EQ(height, sideOf(svg, "height"));
    const std::uint32_t levels = wordAt(bytes, 28);
    EXPECT_EQ(levels, static_cast<std::uint32_t>(std::bit_width(std::max(width, height))));
    std::size_t size = 128;
    for (std::uint32_t level = 0; level < levels; ++level) {
        size += std::size_t{8} * ((width + 3) / 4) * ((height + 3) / 4);
        width = std::max(1U, width / 2);
        height = std::max(1U, height / 2);
    }
    EXPECT_EQ(bytes.size(), size);
}

} // namespace

TEST(ImageList, HoldsEveryDrawingAndNothingElse) {
    const JsonValue list = readList();
    ASSERT_EQ(list.kind, JsonKind::Object);
    std::set<std::string> listed;
    for (const JsonMember& member : list.objectValue()) {
        listed.emplace(member.key());
    }
    std::vector<std::string> differing;
    const std::set<std::string> drawn = drawingKeys();
    std::set_symmetric_difference(listed.begin(), listed.end(), drawn.begin(), drawn.end(),
                                  std::back_inserter(differing));
    EXPECT_EQ(differing, std::vector<std::string>()) << "listed without a drawing, or drawn without an entry";
}

TEST(ImageList, NamesEveryKeyOnce) {
    // A repeated key would only replace the first entry in the game's table, in silence.
    const std::string text = textOf("data/images_compressed.json5");
    const std::regex entry("\n\"[A-Za-z0-9]+\": ");
    const auto lines =
        std::distance(std::sregex_iterator(text.begin(), text.end(), entry), std::sregex_iterator());
    EXPECT_EQ(static_cast<std::size_t>(lines), readList().objectValue().size());
}

TEST(ImageList, LeadsToTextureFilesNamedAsTheirKey) {
    const JsonValue list = readList();
    for (const JsonMember& member : list.objectValue()) {
        const std::string key(member.key());
        EXPECT_EQ(member.value.asString(), "AssetsCompressed/" + key + ".dds");
        expectTexture("data/AssetsCompressed/" + key + ".dds", "workshop/art/images/" + key + ".svg");
    }
}

TEST(ImageList, HoldsThePicturesThatTheProgramLooksUpItself) {
    const JsonValue list = readList();
    for (const char* key :
         {"sunset",    "menuBackground", "logo",         "logoTheGame",   "player",       "playerUnarmed",
          "zombie",    "zombieDeath0",   "zombieDeath1", "zombieDeath2",  "zombieDeath3", "flamingo",
          "pineapple", "pineappleHeart", "cocktailFull", "cocktailSpill", "palmTree",     "btnArrow",
          "btnZ",      "btnX",           "btnEsc"}) {
        EXPECT_TRUE(list.contains(key)) << key;
    }
}

TEST(Letters, HaveATextureEach) {
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string name(1, letter);
        expectTexture("data/AssetsCompressed/Font/" + name + ".dds", "workshop/art/font/" + name + ".svg");
    }
}

TEST(Pictures, HaveTheRatiosThatTheScreensAreLaidOutFor) {
    const std::string sunset = textOf("workshop/art/images/sunset.svg");
    EXPECT_EQ(sideOf(sunset, "width"), 2 * sideOf(sunset, "height"));
    const std::string menu = textOf("workshop/art/images/menuBackground.svg");
    EXPECT_EQ(sideOf(menu, "width") * 1004, sideOf(menu, "height") * 1481);
}

} // namespace dunkman
