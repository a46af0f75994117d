#include "base/key_states_writer.h"

namespace dunkman {

KeyStateTable writable::keyStates;
constinit const KeyStateTable& keyStates = writable::keyStates;

namespace {

constexpr std::int32_t downBit = 1;
constexpr std::int32_t changedBit = 2;

std::int32_t bits(KeyState state) { return static_cast<std::int32_t>(state); }

} // namespace

KeyState& keyState(std::int32_t virtualKey) { return writable::keyStates[virtualKey]; }

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
    for (auto& entry : writable::keyStates) {
        entry.second = static_cast<KeyState>(bits(entry.second) & downBit);
    }
}

void releaseAllKeys() {
    for (auto& entry : writable::keyStates) {
        entry.second = KeyState::Up;
    }
}

void clearKeyStates() { writable::keyStates = {}; }

} // namespace dunkman
