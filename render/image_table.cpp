#include "render/image_table.h"

#include "base/fatal.h"

namespace dunkman {

std::unordered_map<std::string, Texture2D> imageTable;
std::array<Texture2D, glyphCount> glyphTable;

const Texture2D& imageByKey(std::string_view key) {
    const auto found = imageTable.find(std::string(key));
    if (found == imageTable.end()) {
        fatal("The image key \"" + std::string(key) +
              "\" is unknown. Add it to images_compressed.json5 or correct the name where it is used.");
    }
    return found->second;
}

void resetImageTable() {
    imageTable.clear();
    glyphTable.fill(Texture2D());
}

} // namespace dunkman
