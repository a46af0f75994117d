#include "world/weapon.h"

#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/properties.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr double wobbleRate = 10.0;     // radians per second
constexpr double wobbleAmplitude = 4.0; // degrees
constexpr double pulseRate = 8.0;       // radians per second
constexpr double pulseAmplitude = 0.2;  // share of the size

// Distance along one axis from a coordinate to the span of half width `half` around `centre`; 0 inside it.
double distanceToSpan(double coordinate, double centre, double half) {
    const double distance = std::abs(coordinate - centre) - half;
    return distance < 0.0 ? 0.0 : distance;
}

} // namespace

void Weapon::attack(Vec2, Vec2 strikePoint, bool) {
    world.walk<Zombie>([&](Zombie& zombie) {
        const Rect body = zombie.getBounds();
        const double halfWidth = (body.maxX - body.minX) * 0.5;
        const double halfHeight = (body.maxY - body.minY) * 0.5;
        const double x = distanceToSpan(strikePoint.x, body.minX + halfWidth, halfWidth);
        const double y = distanceToSpan(strikePoint.y, body.minY + halfHeight, halfHeight);
        if (collisionRadius * collisionRadius > x * x + y * y) {
            zombie.takeDamage(damage);
        }
    });
}

void Weapon::draw() {
    const double wobble = exactSin(elapsedTime * wobbleRate);
    double angle = wobble * wobbleAmplitude;
    Vec2 scale{1.0, 1.0};
    if (highlighted) {
        angle = wobble * wobbleAmplitude + wobble * wobbleAmplitude;
        const double pulse = 1.0 + exactSin(elapsedTime * pulseRate) * pulseAmplitude;
        scale = {pulse, pulse};
        highlighted = false;
    }
    angle += tilt;
    drawScaled(scale, angle);
}

void Weapon::readProperties(const JsonValue& value) {
    Interactable::readProperties(value);
    readTimerProperty(value, "attackTimeout", attackTimeout);
    readNumberProperty(value, "timeoutAnimationPercentage", timeoutAnimationPercentage);
    readPairProperty(value, "attackArc", attackArc);
    readPairProperty(value, "handPivot", handPivot);
    readNumberProperty(value, "animationAngle", animationAngle);
    readPairProperty(value, "collisionPivot", collisionPivot);
    readNumberProperty(value, "collisionRadius", collisionRadius);
    readIntegerProperty(value, "damage", damage);
    readIntegerProperty(value, "durability", durability);
}

JsonValue Weapon::writeProperties() const {
    JsonValue value = Interactable::writeProperties();
    writeProperty(value, "attackTimeout", attackTimeout);
    writeProperty(value, "timeoutAnimationPercentage", timeoutAnimationPercentage);
    writeProperty(value, "attackArc", attackArc);
    writeProperty(value, "handPivot", handPivot);
    writeProperty(value, "animationAngle", animationAngle);
    writeProperty(value, "collisionPivot", collisionPivot);
    writeProperty(value, "collisionRadius", collisionRadius);
    writeProperty(value, "damage", damage);
    writeProperty(value, "durability", durability);
    return value;
}

} // namespace dunkman
