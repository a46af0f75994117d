#include "screens/menu_decoration.h"

#include "base/frame_state.h"
#include "base/geometry.h"
#include "exact/exact_math.h"
#include "render/picture.h"

namespace dunkman {
MenuDecoration::MenuDecoration()
    : items{{
          // base x, y, height, base angle, zOffset, rock: amplitude, frequency, phase, bob: the same
          {"pineapple", 1.5, 1.7, 1.6, -35.0, -0.3, 2.5, 4.0, 0.0, 0.05, 4.0, 0.0},
          {"cocktailFull", 0.8, 1.8, 2.8, -18.0, -0.1, 1.0, 4.0, 1.0, 0.05, 4.0, 0.21460183660249998},
          {"flamingo", 0.0, 1.8, 3.0, -5.0, -0.2, 2.0, 4.0, 2.0, 0.05, 4.0, 1.60730091830125},
          {"palmTree", -0.9, 3.2, 2.5, 35.0, -0.4, 1.0, 4.0, 0.0, 0.0, 4.0, 0.0},
          {"palmTree", 2.5, 1.5, 2.4, -45.0, -0.5, 1.0, 4.0, 0.0, 0.0, 4.0, 0.0},
      }},
      logoPosition{-0.5, 1.0} {}

void drawDecorationItem(const DecorationItem& item) {
    const double time = frameState.elapsedTime;
    const double bob = exactSin(time * item.bobFrequency + item.bobPhase) * item.bobAmplitude;
    const double tilt = item.baseAngle * radiansPerDegree;
    const Vec2 position = {item.baseX + exactSin(tilt) * bob, item.baseY + exactCos(-tilt) * bob};
    const double angle =
        exactSin(time * item.rockFrequency + item.rockPhase) * item.rockAmplitude + item.baseAngle;
    drawPicture(item.imageKey, position, item.height, angle, item.zOffset, 0, SpriteMode::Interface);
}

void drawMenuDecoration(const MenuDecoration& decoration) {
    const double time = frameState.elapsedTime;
    const Vec2 logo = decoration.logoPosition;
    drawPicture("logo", logo, 4.0, exactSin(time * 1.5), 0.1, 0, SpriteMode::Interface);
    drawPicture("logoTheGame", {logo.x + 1.0, logo.y - 1.2}, exactSin(time * 5.0) * 0.05 + 0.75,
                exactSin(time * 1.5) + 7.0, 0.2, 0, SpriteMode::Interface);
    for (const DecorationItem& item : decoration.items) {
        drawDecorationItem(item);
    }
}

} // namespace dunkman
