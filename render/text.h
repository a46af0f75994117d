#pragma once

#include <array>
#include <string_view>

#include "render/geometry.h"
#include "render/sprite.h"

namespace dunkman {

// Draws capitals A to Z and spaces. The box's first corner is (minX, minY); align 0 puts the text at the box's low
// edge, 0.5 centres it, 1 puts it at the high edge. wrapWidth 0 never wraps. `reserved` is ignored.
void drawText(std::string_view text, int reserved, double letterHeight, double wrapWidth, const Rect& box,
              Vec2 align);

// Draws an image of the image table, `height` units tall in its own proportions, centred on `position`.
void drawPicture(std::string_view imageKey, Vec2 position, double height, double angle, double zOffset,
                 int reserved, SpriteMode mode);

// One gently rocking and bobbing picture of the menu. Angles and rock amplitude in degrees.
struct DecorationItem {
    std::string_view imageKey;
    double baseX;
    double baseY;
    double height;
    double baseAngle;
    double zOffset;
    double rockAmplitude;
    double rockFrequency;
    double rockPhase;
    double bobAmplitude;
    double bobFrequency;
    double bobPhase;
};

// The logo and the five pictures behind it, at their fixed places.
struct MenuDecoration {
    MenuDecoration();

    std::array<DecorationItem, 5> items;
    Vec2 logoPosition;
};

void drawDecorationItem(const DecorationItem& item);
void drawMenuDecoration(const MenuDecoration& decoration);

} // namespace dunkman
