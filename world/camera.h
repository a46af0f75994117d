#pragma once

#include "world/object.h"

namespace dunkman {

// Eases after the hero, or sideways after a target while an arena holds it.
class Camera final : public Object {
public:
    static constexpr ObjectType type = ObjectType::Camera;

    ObjectType getType() const override { return type; }
    void lateUpdate() override;
    void traceState(TraceLine& line) const override;

    Object* target = nullptr; // not owned; null: the hero

    // Fields of data files.
    Vec2 offset{0.0, 2.0};
};

// A camera's x never goes below.
inline constexpr double leftmostView = -5.0;

// What the camera sees of the plane of the game: viewWidth wide, as high as the window's proportions ask for.
Rect viewRectangle(const Camera& camera);

} // namespace dunkman
