#pragma once

#include <cstdint>

#include "audio/music_track.h"

namespace dunkman {

// Adds `frames` stereo frames of the track to `destination` (two floats a frame, left first), the same sample
// on both sides, scaled to -1..1 and by `volume` (1 leaves it as it is). Reading starts at the track's
// position and wraps in a looping track; behind the end of any other, and for a track without samples,
// `destination` stays as it was. The track itself does not change.
void mixTrack(float* destination, std::uint32_t frames, float volume, const MusicTrack& track);

// The same from another position than the track's own; `start` is 0..frameCount().
void mixTrackFrom(float* destination, std::uint32_t frames, float volume, const MusicTrack& track,
                  std::uint64_t start);

} // namespace dunkman
