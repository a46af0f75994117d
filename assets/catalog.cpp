#include "assets/catalog.h"

#include "assets/catalog_writer.h"
#include "base/fatal.h"
#include "json5/data_file.h"
#include "render/image_table_writer.h"

#include <string_view>

namespace dunkman {

namespace {

constexpr std::string_view glyphFolder = "AssetsCompressed/Font/";

} // namespace

AssetCatalog writable::assetCatalog;
constinit const AssetCatalog& assetCatalog = writable::assetCatalog;

void AssetCatalog::loadAll() {
    const JsonValue images = loadDataFile("images_compressed.json5");
    for (const JsonMember& image : images.asObject()) {
        const std::string key(image.key());
        const Texture2D texture =
            namingPlace([&key] { return "It is the picture \"" + key + "\" of images_compressed.json5."; },
                        [&image] { return Texture2D(std::string(image.value.asString())); });
        if (writable::pictures.imageTable.insert_or_assign(key, texture).second) {
            imageKeys.push_back(key);
        }
    }

    const JsonValue recipeFile = loadDataFile("recipes.json5");
    recipes = recipeFile.asObject();
    const JsonValue prefabFile = loadDataFile("prefabs.json5");
    prefabs = prefabFile.asObject();

    std::string path = std::string(glyphFolder) + "A.dds";
    for (Texture2D& glyph : writable::pictures.glyphTable) {
        glyph = Texture2D(path);
        ++path[glyphFolder.size()];
    }
}

void AssetCatalog::releaseAll() {
    for (const std::string& key : imageKeys) {
        writable::pictures.imageTable.at(key).release();
    }
    for (Texture2D& glyph : writable::pictures.glyphTable) {
        glyph.release();
    }
    writable::pictures = {};
    *this = {};
}

} // namespace dunkman
