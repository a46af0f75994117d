#pragma once

#include <string_view>

#include "base/geometry.h"

namespace dunkman {

// Draws capitals A to Z and spaces. The box's first corner is (minX, minY); align 0 puts the text at the box's low
// edge, 0.5 centres it, 1 puts it at the high edge. wrapWidth 0 never wraps. `reserved` is ignored.
void drawText(std::string_view text, int reserved, double letterHeight, double wrapWidth, const Rect& box,
              Vec2 align);

} // namespace dunkman
