#pragma once

#include <string>
#include <vector>

#include "json5/value.h"

namespace dunkman {

// What the game loads once at start-up, before any scene is built. Images and glyphs go to the tables of
// render/image_table.h; recipes and prefabs are kept here.
class AssetCatalog {
public:
    JsonMembers recipes; // recipe name -> property object with `_type`
    JsonMembers prefabs; // prefab name -> array of scene entries

    // Loads, in this order, the images of "images_compressed.json5" (in the order of the file),
    // "recipes.json5", "prefabs.json5" and the glyphs A to Z. Needs an OpenGL context. A missing or malformed
    // data file counts as what could be read of it; a missing or broken DDS file stops the game.
    void loadAll();

    // Deletes the images' textures in the order in which they were loaded, then the glyphs', and forgets
    // everything. Needs the OpenGL context.
    void releaseAll();

private:
    std::vector<std::string> imageKeys; // in the order of loading
};

extern const AssetCatalog& assetCatalog;

} // namespace dunkman
