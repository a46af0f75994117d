#pragma once

#include <array>
#include <cstdint>
#include <set>

namespace dunkman::playthrough {

// What a player wants of the keys in one step.
struct Wish {
    int horizontal = 0; // -1 left, +1 right
    int vertical = 0;   // -1 down, +1 up
    bool attack = false;
    bool pickUp = false;
};

// Turns wishes into keys the way fingers do: no key changes faster than a finger can, and actions are taps.
class Hands {
public:
    Hands();

    // The keys that are down in the next step.
    const std::set<std::int32_t>& move(const Wish& wish);

    // The action keys are free for another tap.
    bool canTap() const;

private:
    struct Finger {
        std::int32_t key;
        int stepsSinceChange;
    };

    void hold(Finger& finger, bool wanted);
    void tap(Finger& finger, bool wanted);

    std::array<Finger, 4> directions;
    std::array<Finger, 2> actions;
    std::set<std::int32_t> down;
};

} // namespace dunkman::playthrough
