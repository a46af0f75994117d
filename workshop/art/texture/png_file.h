#pragma once

#include "workshop/art/texture/picture.h"

#include <string>

namespace dunkman {

/// Reads a PNG of any kind as 8-bit RGBA. Throws std::runtime_error naming the file when that fails.
Picture readPng(const std::string& path);

/// Writes an RGBA PNG without dates or other text. Throws std::runtime_error naming the file when that fails.
void writePng(const std::string& path, const Picture& picture);

} // namespace dunkman
