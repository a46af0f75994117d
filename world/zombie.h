#pragma once

#include "world/walker.h"

namespace dunkman {

// The enemy: notices the hero, walks up, winds up and strikes for as long as the hero stays in reach.
class Zombie final : public Walker {
public:
    static constexpr ObjectType type = ObjectType::Zombie;

    Zombie();
    ObjectType getType() const override { return type; }
    void update() override;
    void traceState(TraceLine& line) const override;
    void draw() override; // swells while it winds up or has just struck

    // Leaves the world and a corpse in its place as soon as health is below 0. The test for death comes after
    // every hit, also after one that did not count, so two hits in one step leave two corpses.
    void takeDamage(std::int32_t amount) override;

    bool attackArmed = false; // wound up: strikes at the next chance

    // Fields of data files.
    Timer attackRateTimer{3.0}; // running: no strike yet
    double searchRadius = 6.0;
    double attackDelay = 0.3;

private:
    void strikeWhenReady();
};

} // namespace dunkman
