#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <vector>

#include "workshop/playthrough/hands.h"
#include "workshop/playthrough/plan.h"

namespace dunkman::playthrough {

// Plays the game by a plan: looks at the world before each step and answers which keys are down in it. Always
// decides the same for the same world.
class Pilot {
public:
    // `reactionSteps`: how many steps of 1/60 s pass between what is seen and what the fingers do.
    explicit Pilot(std::vector<Intention> plan, int reactionSteps = 0);

    const std::set<std::int32_t>& keysForStep();

    // All intentions are done; no key is wanted any more.
    bool finished() const { return current >= plan.size(); }

    // The line of the plan that is being followed, 0 when finished.
    int line() const { return finished() ? 0 : plan[current].line; }

private:
    std::optional<Wish> wishFor(const Intention& intention); // nothing: done
    std::optional<Wish> walkTo(double x, double y) const;
    std::optional<Wish> face(double side) const;
    std::optional<Wish> take(const Intention& intention);
    std::optional<Wish> swing(const Intention& intention);
    std::optional<Wish> snipe(double distance);
    std::optional<Wish> fight(const Intention& intention);
    bool fightIsOver(const Intention& intention) const;
    void begin();

    std::vector<Intention> plan;
    double glide; // seconds of its speed that the hero moves on after a change of mind
    std::size_t current = 0;
    Hands hands;
    std::deque<Wish> underWay; // wishes that have not reached the fingers yet, the oldest first
    // Since the current intention began
    int steps = 0;
    int attacks = 0;
    int nextTap = 0; // the step before which the pick-up key rests
    std::size_t corpsesBefore = 0;
    bool running = false; // makes room for a throw
    bool wasBusy = false; // the weapon swung in the step before
};

} // namespace dunkman::playthrough
