#pragma once

#include "base/key_states.h"

// For those who press keys: the step, the replay, the start of a recorded game, tests.
namespace dunkman {

namespace writable {
extern KeyStateTable keyStates;
} // namespace writable

// The state of a key; a key without an entry gets one that reads Up. The reference stays valid until clearKeyStates,
// also while other keys gain entries: callers use two in one expression.
KeyState& keyState(std::int32_t virtualKey);

// Folds the result of sampling one key into its state. A change also goes to `recorder` unless that is null.
void sampleKey(std::int32_t virtualKey, bool isDown, KeyChanges* recorder);

// Pressed becomes Held, Released becomes Up. Runs once per step after rendering.
void ageKeyStates();

// Every entry becomes Up; none is removed. A key that is still down is then a fresh change to the next
// sampling.
void releaseAllKeys();

void clearKeyStates();

} // namespace dunkman
