#pragma once

#include <string>

#include "audio/music_track.h"

namespace dunkman {

// Decodes a whole MP3 file to mono 48 kHz, whatever rate and channels it holds. The track stands at its end
// and does not loop. A file that is missing, empty, cut off or no MP3 gives a track without samples and one
// line to the debugger output. Supplied by the platform; the simulated one decodes nothing.
MusicTrack decodeMusic(const std::wstring& path);

} // namespace dunkman
