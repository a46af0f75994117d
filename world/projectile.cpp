#include "world/projectile.h"

#include "base/frame_state.h"
#include "world/numbers.h"
#include "world/object_class.h"
#include "world/trace_line.h"
#include "world/world.h"
#include "world/zombie.h"

namespace dunkman {

namespace {

constexpr double gravity = -9.81;  // units/s^2
constexpr double spinRate = 100.0; // degrees per second

} // namespace

template <> const ObjectClass& objectClass<Projectile>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Projectile>(),
        .meaning = "A thrown thing on its way: spins, falls, hurts what it "
                   "hits. Weapons make it; a scene hardly needs one.",
    };
    return record;
}

Projectile::Projectile() {
    friction = {0.0, 0.0};
    acceleration = {0.0, gravity};
}

void Projectile::update() {
    if (spinReversed) {
        angle -= frameState.frameDelta * spinRate;
    } else {
        angle += frameState.frameDelta * spinRate;
    }
    velocity.x += acceleration.x * frameState.frameDelta;
    velocity.y += acceleration.y * frameState.frameDelta;
    Movable::update();
    if (groundY > position.y) {
        world.queueDestroy(*this);
        return;
    }
    const Rect bounds = getBounds();
    bool hit = false;
    world.walk<Zombie>([&](Zombie& zombie) {
        if (overlap(zombie.getBounds(), bounds)) {
            zombie.takeDamage(damage);
            hit = true;
        }
    });
    if (hit) {
        world.queueDestroy(*this);
    }
}

void Projectile::draw() { drawScaled({1.0, 1.0}, angle); }

void Projectile::traceState(TraceLine& line) const {
    Movable::traceState(line);
    line.add("groundY", groundY);
    line.add("damage", damage);
    line.add("angle", angle);
}

} // namespace dunkman
