#pragma once

#include <cstdint>

#include "audio/music_track.h"

namespace dunkman {

// What the feed mixes from now on. Any number without a name here is silence.
enum class MusicSelection : std::int32_t {
    None = 0,
    Intro = 1,
    Game = 2,
};

// The two pieces and which of them is heard. Main thread only: the audio thread sees the ring and nothing else.
struct Music {
    MusicSelection musicSelection = MusicSelection::None;
    MusicTrack gameTrack;
    MusicTrack introTrack;
};

extern const Music& music;

// From the next step on. Screens call it as they are entered.
void selectMusic(MusicSelection selection);

} // namespace dunkman
