#pragma once

#include <cstdint>

#include "world/movable.h"
#include "world/timer.h"

namespace dunkman {

// A mortal that walks: it blinks after a hit and squashes and stretches with its speed. Its position is the
// middle of its feet.
class Walker : public Movable {
public:
    static constexpr ObjectType type = ObjectType::Walker;

    Walker();
    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;
    void draw() override; // advances the walk cycle, except while the blink hides the walker

    // Ignored while a previous hit still protects.
    virtual void takeDamage(std::int32_t amount);

    // Fields of data files.
    double walkAnimation = 0.0;
    std::int32_t health = 2;
    Timer invulnerableTimer{1.5}; // running: no further hit counts

protected:
    // Whether the blink after a hit hides the walker in this frame.
    bool hiddenByBlink() const;
};

} // namespace dunkman
