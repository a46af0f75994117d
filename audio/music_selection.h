#pragma once

#include <cstdint>

namespace dunkman {

// What the feed mixes from now on. Any number without a name here is silence.
enum class MusicSelection : std::int32_t {
    None = 0,
    Intro = 1,
    Game = 2,
};

// None at start-up; screens set it as they are entered, feedAudio reads it. Main thread only.
extern MusicSelection musicSelection;

} // namespace dunkman
