#pragma once

#include <string>
#include <string_view>

// What becomes of a recording whose game does not reach its end: Escape, a closed window, a fault, a full disk.
namespace dunkman {

// In Record mode, writes what has been recorded and is not saved yet to "recording-unfinished.json5" or, where that
// cannot be written, to the user's folder for temporary files. An older file of that name, of another game, is kept as
// "recording-unfinished-older.json5". Answers sentences for the player that say where it is; nothing when there is
// nothing to keep.
std::string keepUnfinishedRecording();

// Does the same without a word every ten seconds of the game, so that not even a power failure costs more than those.
// Once for each turn of the loop.
void keepRecordingNowAndThen();

// The game has been saved in full: removes what has been kept of it.
void dropUnfinishedRecording();

// Writes a file that is to be put in another one's place. False, and no file, when that is not possible.
bool writeNewFile(const std::string& path, std::string_view text);

} // namespace dunkman
