#include "workshop/art/texture/png_file.h"

#include <png.h>

#include <stdexcept>

namespace dunkman {

namespace {

[[noreturn]] void failed(const std::string& path, const png_image& image) {
    throw std::runtime_error(path + ": " + image.message);
}

} // namespace

Picture readPng(const std::string& path) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        failed(path, image);
    }
    image.format = PNG_FORMAT_RGBA;
    Picture picture(static_cast<int>(image.width), static_cast<int>(image.height));
    static_assert(sizeof(Rgba) == 4, "libpng fills the texels in place");
    if (png_image_finish_read(&image, nullptr, picture.texels.data(), 0, nullptr) == 0) {
        failed(path, image);
    }
    return picture;
}

void writePng(const std::string& path, const Picture& picture) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.texels.data(), 0, nullptr) == 0) {
        failed(path, image);
    }
}

} // namespace dunkman
