#pragma once

#include "audio/music.h"

// For the sound, which loads the pieces and moves on in them, and for tests.
namespace dunkman {

namespace writable {
extern Music music;
} // namespace writable

// The track that the selection names; null for silence.
MusicTrack* selectedTrack();

} // namespace dunkman
