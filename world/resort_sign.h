#pragma once

#include "world/drawable.h"

namespace dunkman {

// The sign of the resort, whose nail gives way shortly after the game begins.
class ResortSign final : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::ResortSign;

    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;

    double clock = 0.0; // seconds since the sign was made
    double fromTilt = 0.0;
    double toTilt = 15.0;   // degrees
    double startTime = 0.8; // seconds
    double endTime = 0.9;
};

} // namespace dunkman
