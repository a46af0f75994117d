#pragma once

#include <array>
#include <string_view>

#include "base/geometry.h"

namespace dunkman {

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
