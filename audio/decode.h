#pragma once

#include <string>

#include "audio/music_track.h"

namespace dunkman {

// Decodes a whole MP3 file to mono 48 kHz, whatever rate and channels it holds. The track stands at its end
// and does not loop. A file that is cut off or holds junk between its frames plays as far as the decoder goes;
// one that is missing, empty or no MP3 gives a track without samples. Either way: one line to the debugger output.
// Supplied by the platform; the simulated one decodes nothing.
MusicTrack decodeMusic(const std::wstring& path);

} // namespace dunkman
