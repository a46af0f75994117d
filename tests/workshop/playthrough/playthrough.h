#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <vector>

#include "base/frame_state.h"
#include "platform/platform.h"
#include "workshop/playthrough/story.h"
#include "world/object_type.h"

namespace dunkman {

// The shipped data as the current directory, and a fresh process before and after each test.
class ShippedData : public testing::Test {
protected:
    ShippedData();
    ~ShippedData() override;

    // Of the play-through's plan and of the scene, from left to right. The fights: the lines that start them.
    static std::vector<playthrough::Act> acts();
    static std::vector<double> fights();

private:
    std::filesystem::path startFolder;
};

// What a test wants to know of one step on the game screen, as it stands after update.
struct StepNote {
    std::uint64_t digest = 0; // of everything in the world that can change, to the last bit
    double heroX = 0.0;
    int hearts = 0;
    ObjectType held = ObjectType::Invalid;
    int durability = 0; // of the weapon in hand
    int corpses = 0;
    int projectiles = 0;
    int zombies = 0;
    bool cameraHeld = false;
    bool swung = false; // an attack was made in this step
};

enum class KeySource { Recording, KeyScript };

inline constexpr platform::ClientSize wideWindow = {1920, 1080};

// Plays the game from the first step on the beach until its screen is left: replays recording.json5, or plays
// the key script of the play-through in Record mode, which leaves its records in `recording`. Fails the test
// when the game goes on for longer than four minutes.
std::vector<StepNote> play(KeySource source, platform::ClientSize window = wideWindow);

} // namespace dunkman
