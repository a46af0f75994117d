#pragma once

#include <string>

// Where the game's files are. Every path of the game is UTF-8 and relative to the working directory, so that directory is chosen
// once, before anything is read.
namespace dunkman {

// Whether a folder holds game data: any of the files that the game cannot do without and never writes itself. One is
// enough: who works on a level wants to hear of the file that is missing, not to see another level.
bool holdsGameData(const std::string& folder);

// Stays in the working directory when it holds game data; otherwise goes to the program's own folder, or to "data" in
// it, whichever comes first. Stops the game with a message that names all places when none of them does. An empty
// `programFolder` is no place.
void enterDataFolder(const std::string& programFolder);

} // namespace dunkman
