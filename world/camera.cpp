#include "world/camera.h"

#include <algorithm>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/player.h"
#include "world/properties.h"
#include "world/world.h"

namespace dunkman {

namespace {

constexpr double viewWidth = 18.0;
constexpr double easingRate = -4.0;   // 1/s
constexpr double leftmostView = -5.0; // the camera's x never goes below

} // namespace

void Camera::lateUpdate() {
    const Player* hero = world.first<Player>();
    const Object* followed = target != nullptr ? target : hero;
    if (followed != nullptr) {
        const Rect bounds = followed->getBounds();
        const double goalX = (bounds.minX + bounds.maxX) * 0.5;
        const double kept = exactExp(frameDelta * easingRate);
        position.x = (position.x - goalX) * kept + goalX;
        // The height is the hero's also while another target is followed.
        if (hero != nullptr) {
            const double goalY = hero->position.y;
            position.y = (position.y - goalY) * kept + goalY;
        }
    }
    position.x = std::max(position.x, leftmostView);
}

void Camera::readProperties(const JsonValue& value) {
    Object::readProperties(value);
    readPairProperty(value, "offset", offset);
}

JsonValue Camera::writeProperties() const {
    JsonValue value = Object::writeProperties();
    writeProperty(value, "offset", offset);
    return value;
}

Rect viewRectangle(const Camera& camera) {
    const double centreX = camera.position.x + camera.offset.x;
    const double centreY = camera.position.y + camera.offset.y;
    const double halfHeight = (1.0 / aspectRatio) * viewWidth * 0.5;
    return {centreX - 9.0, centreY - halfHeight, centreX + 9.0, centreY + halfHeight};
}

} // namespace dunkman
