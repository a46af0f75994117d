#include "render/texture.h"

#include <algorithm>

#include "render/dds.h"
#include "render/gl.h"
#include "render/renderer.h"
#include "render/renderer_objects.h"
#include "render/texture_coverage.h"

namespace dunkman {

Texture2D::Texture2D(const std::string& path) {
    const DdsImage image = readDds(path);
    internalFormat = GL_COMPRESSED_RGBA_S3TC_DXT1_EXT;
    width = image.header.width;
    height = image.header.height;
    levels = static_cast<std::uint8_t>(ddsStorageLevels(image.header));
    glCreateTextures(GL_TEXTURE_2D, 1, &name);
    if (isPreparedForSoftware()) {
        rendererObjects->software->coverage[name] = coverageOf(image);
    }
    glTextureStorage2D(name, levels, internalFormat, static_cast<GLsizei>(width),
                       static_cast<GLsizei>(height));
    // A file may hold more levels than a texture of its size can have. They are handed over too; OpenGL refuses
    // them without harm.
    for (const DdsUpload& upload : ddsUploads(image.header)) {
        glCompressedTextureSubImage2D(name, static_cast<GLint>(upload.level), 0, 0,
                                      static_cast<GLsizei>(upload.width), static_cast<GLsizei>(upload.height),
                                      internalFormat, static_cast<GLsizei>(upload.bytes),
                                      image.pixels().data() + upload.offset);
    }
}

void Texture2D::release() {
    if (isPreparedForSoftware()) {
        rendererObjects->software->coverage.erase(name);
    }
    glDeleteTextures(1, &name);
    name = 0;
}

double aspectOf(const Texture2D& texture) {
    return static_cast<double>(std::max(texture.width, 1u)) /
           static_cast<double>(std::max(texture.height, 1u));
}

} // namespace dunkman
