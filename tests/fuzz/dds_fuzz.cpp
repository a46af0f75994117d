#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/fatal.h"
#include "render/dds.h"
#include "render/texture_coverage.h"

// Any bytes are either refused with a message or a texture whose uploads all lie within its pixels, and what is known of
// its transparent parts within the texture.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace dunkman;
    try {
        const DdsImage image = parseDds(Bytes(std::string(data, data + size)), "fuzz.dds");
        const std::uint32_t storage = ddsStorageLevels(image.header);
        if (storage == 0 || storage > image.header.mipMapCount) {
            std::abort();
        }
        for (const DdsUpload& upload : ddsUploads(image.header)) {
            if (upload.bytes == 0 || upload.offset + upload.bytes > image.pixels().size()) {
                std::abort();
            }
        }
        for (const TextureCoverage& coverage : coverageOf(image)) {
            for (std::size_t index = 0; index < coverage.count; ++index) {
                const TexelRect& part = coverage.parts.at(index);
                if (part.left >= part.right || part.right > image.header.width || part.top >= part.bottom ||
                    part.bottom > image.header.height) {
                    std::abort();
                }
            }
        }
    } catch (const FatalError&) {
        // refused
    }
    return 0;
}
