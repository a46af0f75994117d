#include "world/weapon.h"

#include <array>
#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/object_class.h"
#include "world/trace_line.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Weapon::attackTimeout>("attackTimeout", "seconds from one attack until the next may start",
                                  positive),
    field<&Weapon::timeoutAnimationPercentage>("timeoutAnimationPercentage",
                                               "share of attackTimeout for the swing", {0, 1, true}),
    field<&Weapon::attackArc>("attackArc", "how far it swings, degrees: first forwards, then back"),
    field<&Weapon::handPivot>("handPivot", "point of the picture in the hand, fractions of its size"),
    field<&Weapon::animationAngle>("animationAngle", "degrees; set by the swing while it is held"),
    field<&Weapon::collisionPivot>("collisionPivot", "point of the picture that hits, fractions of its size"),
    field<&Weapon::collisionRadius>("collisionRadius", "how far around that point it hits, units", positive),
    field<&Weapon::damage>("damage", "health that a hit takes from each zombie", notNegative),
    field<&Weapon::durability>("durability", "attacks until it breaks; below 0 it never does"),
};

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

template <> const ObjectClass& objectClass<Weapon>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Weapon>(),
        .meaning = "Something that the hero can take and swing.",
        .fields = fields,
    };
    return record;
}

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
    const double wobble = exactSin(frameState.elapsedTime * wobbleRate);
    double angle = wobble * wobbleAmplitude;
    Vec2 scale{1.0, 1.0};
    if (highlighted) {
        angle = wobble * wobbleAmplitude + wobble * wobbleAmplitude;
        const double pulse = 1.0 + exactSin(frameState.elapsedTime * pulseRate) * pulseAmplitude;
        scale = {pulse, pulse};
        highlighted = false;
    }
    angle += tilt;
    drawScaled(scale, angle);
}

void Weapon::traceState(TraceLine& line) const {
    Interactable::traceState(line);
    line.add("durability", durability);
    line.add("attackRunning", attackTimeout.running);
    line.add("attackElapsed", attackTimeout.elapsed);
    line.add("animationAngle", animationAngle);
}

} // namespace dunkman
