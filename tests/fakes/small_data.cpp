#include "tests/fakes/small_data.h"

#include <array>
#include <atomic>
#include <chrono>
#include <fstream>
#include <sstream>

namespace dunkman {

namespace {

constexpr std::array<const char*, 21> imageKeys = {
    "sunset",    "menuBackground", "logo",         "logoTheGame",   "player",       "playerUnarmed",
    "zombie",    "zombieDeath0",   "zombieDeath1", "zombieDeath2",  "zombieDeath3", "flamingo",
    "pineapple", "pineappleHeart", "cocktailFull", "cocktailSpill", "palmTree",     "btnArrow",
    "btnZ",      "btnX",           "btnEsc"};

void appendWord(std::string& bytes, unsigned word) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(word >> shift & 0xFFu);
    }
}

std::filesystem::path newFolder() {
    static std::atomic<unsigned> count = 0;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    return std::filesystem::temp_directory_path() /
           ("dunkman_test_" + std::to_string(now) + "_" + std::to_string(count++));
}

} // namespace

std::string smallDds(unsigned width, unsigned height) {
    std::string bytes = "DDS ";
    std::array<unsigned, 31> header = {};
    header[0] = 124;
    header[1] = 0x81007; // caps, height, width, pixel format, linear size
    header[2] = height;
    header[3] = width;
    header[6] = 1; // levels
    header[18] = 32;
    header[19] = 4;          // the FourCC counts
    header[20] = 0x31545844; // DXT1
    header[26] = 0x1000;     // texture
    for (const unsigned word : header) {
        appendWord(bytes, word);
    }
    const unsigned blocks = ((width + 3) / 4) * ((height + 3) / 4);
    for (unsigned block = 0; block < blocks; ++block) {
        appendWord(bytes, 0xFFFFFFFF); // both end colours white
        appendWord(bytes, 0);
    }
    return bytes;
}

SmallData::SmallData() : folder(newFolder()), previousFolder(std::filesystem::current_path()) {
    std::filesystem::create_directories(folder / "AssetsCompressed" / "Font");
    for (const char* shader : {"drawable_basic.vert", "drawable_basic.frag", "drawable_sprite.glsl"}) {
        std::filesystem::copy_file(previousFolder / "data" / shader, folder / shader);
    }
    std::string images = "{";
    for (const char* key : imageKeys) {
        images += '"' + std::string(key) + "\":\"AssetsCompressed/small.dds\",\n";
    }
    write("images_compressed.json5", images + "}");
    write("AssetsCompressed/small.dds", smallDds(4, 4));
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        write(std::string("AssetsCompressed/Font/") + letter + ".dds", smallDds(4, 8));
    }
    write("recipes.json5", R"({"hero":{"_type":"Player"},"camera":{"_type":"Camera"}})");
    write("prefabs.json5", "{}");
    write("scene.json5", R"([{"recipe":"hero"},{"recipe":"camera"}])");
    std::filesystem::current_path(folder);
}

SmallData::~SmallData() {
    std::filesystem::current_path(previousFolder);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void SmallData::write(const std::string& path, std::string_view text) const {
    std::ofstream(folder / path, std::ios::binary) << text;
}

std::string SmallData::read(const std::string& path) const {
    std::ifstream file(folder / path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void SmallData::remove(const std::string& path) const { std::filesystem::remove(folder / path); }

} // namespace dunkman
