#include "workshop/playthrough/hands.h"

#include "base/key_states.h"

namespace dunkman::playthrough {

namespace {

// Steps of 1/60 s.
constexpr int shortestHold = 5;
constexpr int tapLength = 5;
constexpr int rested = 1000;

} // namespace

Hands::Hands()
    : directions{{{keys::left, rested}, {keys::right, rested}, {keys::down, rested}, {keys::up, rested}}},
      actions{{{keys::x, rested}, {keys::z, rested}}} {}

const std::set<std::int32_t>& Hands::move(const Wish& wish) {
    hold(directions[0], wish.horizontal < 0);
    hold(directions[1], wish.horizontal > 0);
    hold(directions[2], wish.vertical < 0);
    hold(directions[3], wish.vertical > 0);
    tap(actions[0], wish.attack);
    tap(actions[1], wish.pickUp);
    return down;
}

bool Hands::canTap() const { return !down.contains(keys::x) && !down.contains(keys::z); }

void Hands::hold(Finger& finger, bool wanted) {
    ++finger.stepsSinceChange;
    if (wanted == down.contains(finger.key) || finger.stepsSinceChange < shortestHold) {
        return;
    }
    finger.stepsSinceChange = 0;
    if (wanted) {
        down.insert(finger.key);
    } else {
        down.erase(finger.key);
    }
}

void Hands::tap(Finger& finger, bool wanted) {
    ++finger.stepsSinceChange;
    if (down.contains(finger.key)) {
        if (finger.stepsSinceChange >= tapLength) {
            down.erase(finger.key);
            finger.stepsSinceChange = 0;
        }
    } else if (wanted && finger.stepsSinceChange >= tapLength) {
        down.insert(finger.key);
        finger.stepsSinceChange = 0;
    }
}

} // namespace dunkman::playthrough
