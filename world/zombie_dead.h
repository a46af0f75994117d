#pragma once

#include <array>
#include <cstddef>

#include "world/drawable.h"

namespace dunkman {

// A zombie's corpse: falls in four pictures, then lies still for the rest of the game.
class ZombieDead final : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::ZombieDead;

    ZombieDead();
    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;
    void drawScaled(Vec2 scale, double angle) override; // shifted by picture; isUI does not count

    double frameRate = 3.0; // pictures per second
    double frameTime = 0.0; // pictures since the fall began, up to 3
    std::array<Texture2D, 4> frames;

private:
    std::size_t frameNumber() const;
};

} // namespace dunkman
