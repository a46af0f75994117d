#include "world/walker.h"

#include <cmath>

#include "base/frame_state.h"
#include "exact/exact_math.h"
#include "world/numbers.h"
#include "world/properties.h"

namespace dunkman {

namespace {

constexpr double blinksPerSecond = 7.0; // every second one hides

} // namespace

Walker::Walker() {
    size = {1.0, 2.0};
    pivot = {0.5, 0.0};
}

void Walker::update() {
    invulnerableTimer.advance(frameDelta);
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
    walkAnimation += (speed * 7.0 + 1.0) * frameDelta;
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

void Walker::readProperties(const JsonValue& value) {
    Movable::readProperties(value);
    readNumberProperty(value, "walkAnimation", walkAnimation);
    readIntegerProperty(value, "health", health);
    readTimerProperty(value, "invulnerableTimer", invulnerableTimer);
}

JsonValue Walker::writeProperties() const {
    JsonValue value = Movable::writeProperties();
    writeProperty(value, "walkAnimation", walkAnimation);
    writeProperty(value, "health", health);
    writeProperty(value, "invulnerableTimer", invulnerableTimer);
    return value;
}

} // namespace dunkman
