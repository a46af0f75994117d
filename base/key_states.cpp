#include "base/key_states.h"

namespace dunkman {

namespace {

// A tree, not a hash table: references into it survive insertions, and traces list keys in code order.
std::map<std::int32_t, KeyState> keyStates;

constexpr std::int32_t downBit = 1;
constexpr std::int32_t changedBit = 2;

std::int32_t bits(KeyState state) { return static_cast<std::int32_t>(state); }

} // namespace

const std::map<std::int32_t, KeyState>& allKeyStates() { return keyStates; }

KeyState& keyState(std::int32_t virtualKey) { return keyStates[virtualKey]; }

KeyState findKeyState(std::int32_t virtualKey) {
    const auto entry = keyStates.find(virtualKey);
    return entry == keyStates.end() ? KeyState::Up : entry->second;
}

bool eitherDown(std::int32_t firstKey, std::int32_t secondKey) {
    return (bits(keyState(firstKey) | keyState(secondKey)) & downBit) != 0;
}

bool eitherJustPressed(std::int32_t firstKey, std::int32_t secondKey) {
    return (keyState(firstKey) | keyState(secondKey)) == KeyState::Pressed;
}

void sampleKey(std::int32_t virtualKey, bool isDown, KeyChanges* recorder) {
    KeyState& state = keyState(virtualKey);
    const std::int32_t wasDown = bits(state) & downBit;
    const std::int32_t down = isDown ? downBit : 0;
    const auto newState = static_cast<KeyState>(down == wasDown ? down : (down | changedBit));
    if (newState != state) {
        state = newState;
        if (recorder != nullptr) {
            recorder->push_back({virtualKey, newState});
        }
    }
}

void ageKeyStates() {
    for (auto& entry : keyStates) {
        entry.second = static_cast<KeyState>(bits(entry.second) & downBit);
    }
}

void releaseAllKeys() {
    for (auto& entry : keyStates) {
        entry.second = KeyState::Up;
    }
}

void clearKeyStates() { keyStates.clear(); }

} // namespace dunkman
