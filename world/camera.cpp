#include "world/camera.h"

#include <algorithm>
#include <array>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/object_class.h"
#include "world/player.h"
#include "world/trace_line.h"
#include "world/world.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Camera::offset>("offset", "from its position to the middle of the view, units"),
};

constexpr double easingRate = -4.0; // 1/s

} // namespace

template <> const ObjectClass& objectClass<Camera>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Camera>(),
        .meaning = "The eye that follows the hero, or rests on a fight. Its "
                   "view is 18 units wide. The game needs one.",
        .fields = fields,
    };
    return record;
}

void Camera::lateUpdate() {
    const Player* hero = world.first<Player>();
    const Object* followed = target != nullptr ? target : hero;
    if (followed != nullptr) {
        const Rect bounds = followed->getBounds();
        const double goalX = (bounds.minX + bounds.maxX) * 0.5;
        const double kept = exactExp(frameState.frameDelta * easingRate);
        position.x = (position.x - goalX) * kept + goalX;
        // The height is the hero's also while another target is followed.
        if (hero != nullptr) {
            const double goalY = hero->position.y;
            position.y = (position.y - goalY) * kept + goalY;
        }
    }
    position.x = std::max(position.x, leftmostView);
}

void Camera::traceState(TraceLine& line) const {
    Object::traceState(line);
    line.add("target", typeNameOf(target));
}

Rect viewRectangle(const Camera& camera) {
    const double centreX = camera.position.x + camera.offset.x;
    const double centreY = camera.position.y + camera.offset.y;
    const double halfHeight = (1.0 / frameState.aspectRatio) * viewWidth * 0.5;
    return {centreX - halfViewWidth, centreY - halfHeight, centreX + halfViewWidth, centreY + halfHeight};
}

} // namespace dunkman
