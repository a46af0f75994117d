#include "world/walker.h"

#include <array>
#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/numbers.h"
#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Walker::walkAnimation>("walkAnimation", "phase of the walk cycle, radians"),
    field<&Walker::health>("health", "falls when this drops below 0", {0, 1000}),
    field<&Walker::invulnerableTimer>("invulnerableTimer", "seconds after a hit in which no other counts",
                                      positive),
};

constexpr double blinksPerSecond = 7.0; // every second one hides

} // namespace

template <> const ObjectClass& objectClass<Walker>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Walker>(),
        .meaning = "A mortal that walks. Nobody steers it.",
        .fields = fields,
    };
    return record;
}

Walker::Walker() {
    size = {1.0, 2.0};
    pivot = {0.5, 0.0};
}

void Walker::update() {
    invulnerableTimer.advance(frameState.frameDelta);
    Movable::update();
}

bool Walker::hiddenByBlink() const {
    return invulnerableTimer.running &&
           std::fmod(std::trunc(invulnerableTimer.elapsed * blinksPerSecond), 2.0) != 0.0;
}

void Walker::draw() {
    if (hiddenByBlink()) {
        return;
    }
    const double speed = clamp((std::abs(velocity.y) + std::abs(velocity.x)) * 0.5, 0.0, 1.0);
    walkAnimation += (speed * 7.0 + 1.0) * frameState.frameDelta;
    const double scaleX = std::abs(exactSin(walkAnimation)) * speed * 0.1 + 0.95;
    // The long constant is (1 - 0.95) / 2 as doubles give it.
    const double scaleY =
        std::abs(exactCos(walkAnimation)) * (0.1 - speed * 0.05) + (speed * 0.025000000000000022 + 0.95);
    drawScaled({scaleX, scaleY}, 0.0);
}

void Walker::takeDamage(std::int32_t amount) {
    if (!invulnerableTimer.running) {
        health = static_cast<std::int32_t>(static_cast<std::int64_t>(health) - amount);
        invulnerableTimer.running = true;
    }
}

void Walker::traceState(TraceLine& line) const {
    Movable::traceState(line);
    line.add("health", health);
    line.add("walk", walkAnimation);
    line.add("hurtRunning", invulnerableTimer.running);
    line.add("hurtElapsed", invulnerableTimer.elapsed);
}

} // namespace dunkman
