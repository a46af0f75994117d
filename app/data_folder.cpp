#include "app/data_folder.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

#include "base/fatal.h"
#include "base/files.h"

namespace dunkman {

namespace {

constexpr std::array<const char*, 6> gameFiles = {"images_compressed.json5", "recipes.json5",
                                                  "prefabs.json5",           "scene.json5",
                                                  "drawable_basic.vert",     "drawable_basic.frag"};

std::vector<std::string> placesFor(const std::string& programFolder) {
    const std::string current = workingFolder();
    std::vector<std::string> places;
    if (!current.empty()) {
        places.push_back(current);
    }
    if (!programFolder.empty()) {
        if (programFolder != current) {
            places.push_back(programFolder);
        }
        places.push_back(pathIn(programFolder, "data"));
    }
    return places;
}

} // namespace

bool holdsGameData(const std::string& folder) {
    return std::any_of(gameFiles.begin(), gameFiles.end(), [&folder](const char* name) {
        return statusOf(pathIn(folder, name)).kind == FileKind::Ordinary;
    });
}

void enterDataFolder(const std::string& programFolder) {
    const std::vector<std::string> places = placesFor(programFolder);
    const auto found = std::find_if(places.begin(), places.end(), holdsGameData);
    if (found == places.end()) {
        std::string message =
            "The game's data was not found. A folder with images_compressed.json5 and the other "
            "files of the game was looked for in:\n";
        for (const std::string& place : places) {
            message += "\n" + place;
        }
        fatal(message + "\n\nUnpack the whole of the game, not the program alone, and leave the folder "
                        "\"data\" beside the program.");
    }
    if (const std::error_code error = enterFolder(*found)) {
        fatal("The game's data is in " + *found + ", but that folder cannot be entered: " + error.message() +
              ". Move the game to a folder that you may read.");
    }
}

} // namespace dunkman
