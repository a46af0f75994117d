#include "render/image_table_writer.h"

#include "base/fatal.h"

namespace dunkman {

Pictures writable::pictures;
constinit const Pictures& pictures = writable::pictures;

const Texture2D& imageByKey(std::string_view key) {
    const auto found = pictures.imageTable.find(std::string(key));
    if (found == pictures.imageTable.end()) {
        fatal("The image key \"" + std::string(key) +
              "\" is unknown. Add it to images_compressed.json5 or correct the name where it is used.");
    }
    return found->second;
}

} // namespace dunkman
