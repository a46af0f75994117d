#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

// What every polled key did in this simulation step. Main thread only.
namespace dunkman {

// Bit 0: down in this step. Bit 1: changed in this step. A recording may hold any 32-bit number here.
enum class KeyState : std::int32_t {
    Up = 0,
    Held = 1,
    Released = 2,
    Pressed = 3,
};

constexpr KeyState operator|(KeyState left, KeyState right) {
    return static_cast<KeyState>(static_cast<std::int32_t>(left) | static_cast<std::int32_t>(right));
}

// Windows virtual-key codes of the keys that the game knows.
namespace keys {
inline constexpr std::int32_t w = 0x57, a = 0x41, s = 0x53, d = 0x44;
inline constexpr std::int32_t up = 0x26, left = 0x25, down = 0x28, right = 0x27;
inline constexpr std::int32_t x = 0x58, z = 0x5A, space = 0x20, enter = 0x0D, escape = 0x1B;
} // namespace keys

// The keys sampled each step, in sampling order.
inline constexpr std::array<std::int32_t, 13> polledKeys = {
    keys::w,     keys::a, keys::s, keys::d,     keys::up,    keys::left,  keys::down,
    keys::right, keys::x, keys::z, keys::space, keys::enter, keys::escape};

struct KeyChange {
    std::int32_t virtualKey = 0;
    KeyState state = KeyState::Up; // the new one

    bool operator==(const KeyChange&) const = default;
};

// Key changes of one step, in the order in which sampling found them. Of two changes of one key the later
// counts.
using KeyChanges = std::vector<KeyChange>;

// All entries so far, in ascending code order. An entry stays until clearKeyStates. A tree, not a hash table:
// references into it survive insertions.
using KeyStateTable = std::map<std::int32_t, KeyState>;
extern const KeyStateTable& keyStates;

// The state of a key; a key without an entry counts as Up.
KeyState findKeyState(std::int32_t virtualKey);

// Whether either key is down now. Both have an entry from then on.
bool eitherDown(std::int32_t firstKey, std::int32_t secondKey);

// Whether the two states combined read Pressed. Both keys have an entry from then on. One key Held together with the other Released also reads so;
// that is accepted and kept.
bool eitherJustPressed(std::int32_t firstKey, std::int32_t secondKey);

} // namespace dunkman
