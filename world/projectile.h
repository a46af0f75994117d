#pragma once

#include <cstdint>

#include "world/movable.h"

namespace dunkman {

// A thrown thing on its way: spins, falls, hurts every zombie that it touches in the step of its first hit
// and is gone then, or when it has dropped below its ground line.
class Projectile final : public Movable {
public:
    static constexpr ObjectType type = ObjectType::Projectile;

    Projectile();
    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;
    void draw() override; // turned by `angle`; the tilt is not used

    double groundY = -1.0;
    std::int32_t damage = 0;
    bool spinReversed = false;
    double angle = 0.0; // degrees
};

} // namespace dunkman
