#include "render/text.h"

#include <algorithm>

#include "render/image_table.h"
#include "render/sprite.h"

namespace dunkman {
namespace {

// The texture of a capital; null for a space and for every other byte, which counts as one.
const Texture2D* glyphOf(char letter) {
    return letter >= 'A' && letter <= 'Z' ? &pictures.glyphTable[static_cast<std::size_t>(letter - 'A')]
                                          : nullptr;
}

// Sets the letters out from (0, 0) on and hands each to `place` with the place of its first corner and its size.
// Walking a text twice, once for its box and once to draw it, needs no memory.
template <typename Place>
void layOut(std::string_view text, double letterHeight, double wrapWidth, Place place) {
    const double scale = letterHeight / static_cast<double>(std::max(pictures.glyphTable[0].height, 1u));
    Vec2 cursor;
    for (const char letter : text) {
        const Texture2D* const glyph = glyphOf(letter);
        if (glyph == nullptr) {
            cursor.x += letterHeight;
            continue;
        }
        const Vec2 size = {static_cast<double>(std::max(glyph->width, 1u)) * scale,
                           static_cast<double>(std::max(glyph->height, 1u)) * scale};
        place(*glyph, cursor, size);
        cursor.x += size.x;
        if (wrapWidth != 0.0 && cursor.x > wrapWidth) {
            cursor = {0.0, cursor.y + size.y};
        }
    }
}

Rect boxOf(std::string_view text, double letterHeight, double wrapWidth) {
    Rect box;
    layOut(text, letterHeight, wrapWidth, [&box](const Texture2D&, Vec2 place, Vec2 size) {
        box.minX = std::min(box.minX, place.x);
        box.minY = std::min(box.minY, place.y);
        box.maxX = std::max(box.maxX, place.x + size.x);
        box.maxY = std::max(box.maxY, place.y + size.y);
    });
    return box;
}

} // namespace

void drawText(std::string_view text, int /*reserved*/, double letterHeight, double wrapWidth, const Rect& box,
              Vec2 align) {
    const Rect used = boxOf(text, letterHeight, wrapWidth);
    const double textWidth = used.maxX - used.minX;
    const double textHeight = used.maxY - used.minY;
    const Vec2 origin = {box.minX + (box.maxX - box.minX - textWidth) * align.x,
                         box.minY + (box.maxY - box.minY - textHeight) * align.y};
    layOut(text, letterHeight, wrapWidth, [&origin](const Texture2D& glyph, Vec2 place, Vec2 size) {
        draw({.texture = glyph,
              .mirrorY = true,
              .mode = SpriteMode::Interface,
              .position = {origin.x + place.x, origin.y + place.y},
              .size = size,
              .pivot = {0.0, 0.0}});
    });
}

} // namespace dunkman
