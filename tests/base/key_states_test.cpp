#include "base/key_states_writer.h"

#include <gtest/gtest.h>

namespace dunkman {

namespace {

class KeyStates : public testing::Test {
protected:
    KeyStates() { clearKeyStates(); }
    ~KeyStates() override { clearKeyStates(); }
};

TEST_F(KeyStates, ReadPressedOnceThenHeldThenReleasedOnceThenUp) {
    sampleKey(keys::x, true, nullptr);
    EXPECT_EQ(keyState(keys::x), KeyState::Pressed);
    ageKeyStates();
    sampleKey(keys::x, true, nullptr);
    EXPECT_EQ(keyState(keys::x), KeyState::Held);
    ageKeyStates();
    sampleKey(keys::x, false, nullptr);
    EXPECT_EQ(keyState(keys::x), KeyState::Released);
    ageKeyStates();
    sampleKey(keys::x, false, nullptr);
    EXPECT_EQ(keyState(keys::x), KeyState::Up);
}

TEST_F(KeyStates, QueryEntersAKeyAsUpButFindDoesNot) {
    EXPECT_EQ(findKeyState(keys::escape), KeyState::Up);
    EXPECT_TRUE(keyStates.empty());
    EXPECT_EQ(keyState(keys::escape), KeyState::Up);
    EXPECT_EQ(keyStates.size(), 1u);
}

TEST_F(KeyStates, ReferencesStayValidWhileOtherKeysAreEntered) {
    KeyState& first = keyState(1);
    first = KeyState::Held;
    for (std::int32_t key = 2; key < 1000; ++key) {
        keyState(key);
    }
    EXPECT_EQ(&first, &keyState(1));
    EXPECT_EQ(first, KeyState::Held);
}

TEST_F(KeyStates, OneKeyHeldWhileTheOtherIsReleasedCountsAsJustPressed) {
    keyState(keys::x) = KeyState::Held;
    keyState(keys::space) = KeyState::Released;
    EXPECT_TRUE(eitherJustPressed(keys::x, keys::space));
}

TEST_F(KeyStates, AHeldKeyAloneIsDownButNotJustPressed) {
    keyState(keys::d) = KeyState::Held;
    EXPECT_TRUE(eitherDown(keys::d, keys::right));
    EXPECT_FALSE(eitherJustPressed(keys::d, keys::right));
}

TEST_F(KeyStates, AReleasedKeyIsNotDown) {
    keyState(keys::d) = KeyState::Released;
    EXPECT_FALSE(eitherDown(keys::d, keys::right));
}

TEST_F(KeyStates, RecorderGetsChangesInTheOrderOfSampling) {
    KeyChanges changes;
    for (const std::int32_t key : {keys::w, keys::enter, keys::a}) {
        sampleKey(key, true, &changes);
    }
    EXPECT_EQ(changes, (KeyChanges{{keys::w, KeyState::Pressed},
                                   {keys::enter, KeyState::Pressed},
                                   {keys::a, KeyState::Pressed}}));
}

TEST_F(KeyStates, RecorderGetsChangesOnly) {
    KeyChanges changes;
    sampleKey(keys::x, true, &changes);
    sampleKey(keys::z, false, &changes);
    EXPECT_EQ(changes, (KeyChanges{{keys::x, KeyState::Pressed}}));
    ageKeyStates();
    changes.clear();
    sampleKey(keys::x, true, &changes); // Held is what ageing made of it already
    EXPECT_TRUE(changes.empty());
    sampleKey(keys::x, false, &changes);
    EXPECT_EQ(changes, (KeyChanges{{keys::x, KeyState::Released}}));
}

TEST_F(KeyStates, PolledKeysKeepTheirOrder) {
    const std::array<std::int32_t, 13> expected = {0x57, 0x41, 0x53, 0x44, 0x26, 0x25, 0x28,
                                                   0x27, 0x58, 0x5A, 0x20, 0x0D, 0x1B};
    EXPECT_EQ(polledKeys, expected);
}

TEST_F(KeyStates, ReleasingAllKeysLeavesEveryEntryInPlace) {
    KeyState& held = keyState(keys::x);
    held = KeyState::Held;
    keyState(keys::z) = KeyState::Pressed;
    keyState(keys::d) = KeyState::Released;
    releaseAllKeys();
    EXPECT_EQ(keyStates.size(), 3u);
    EXPECT_EQ(&held, &keyState(keys::x));
    for (const auto& [key, state] : keyStates) {
        EXPECT_EQ(state, KeyState::Up) << key;
    }
}

TEST_F(KeyStates, ClearForgetsEveryKey) {
    keyState(keys::x) = KeyState::Held;
    clearKeyStates();
    EXPECT_EQ(findKeyState(keys::x), KeyState::Up);
    EXPECT_TRUE(keyStates.empty());
}

} // namespace

} // namespace dunkman
