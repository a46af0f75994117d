#include "app/data_folder.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <vector>

#include "base/fatal.h"

namespace dunkman {

namespace {

constexpr std::array<const char*, 6> gameFiles = {"images_compressed.json5", "recipes.json5",
                                                  "prefabs.json5",           "scene.json5",
                                                  "drawable_basic.vert",     "drawable_basic.frag"};

std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::vector<std::filesystem::path> placesFor(const std::filesystem::path& programFolder) {
    std::error_code unknown; // a working directory that is gone
    const std::filesystem::path current = std::filesystem::current_path(unknown);
    std::vector<std::filesystem::path> places;
    if (!current.empty()) {
        places.push_back(current);
    }
    if (!programFolder.empty()) {
        if (programFolder != current) {
            places.push_back(programFolder);
        }
        places.push_back(programFolder / "data");
    }
    return places;
}

} // namespace

bool holdsGameData(const std::filesystem::path& folder) {
    return std::any_of(gameFiles.begin(), gameFiles.end(), [&folder](const char* name) {
        std::error_code notThere;
        return std::filesystem::is_regular_file(folder / name, notThere);
    });
}

void enterDataFolder(const std::filesystem::path& programFolder) {
    const std::vector<std::filesystem::path> places = placesFor(programFolder);
    const auto found = std::find_if(places.begin(), places.end(), holdsGameData);
    if (found == places.end()) {
        std::string message =
            "The game's data was not found. A folder with images_compressed.json5 and the other "
            "files of the game was looked for in:\n";
        for (const std::filesystem::path& place : places) {
            message += "\n" + utf8(place);
        }
        fatal(message + "\n\nUnpack the whole of the game, not the program alone, and leave the folder "
                        "\"data\" beside the program.");
    }
    std::error_code error;
    std::filesystem::current_path(*found, error);
    if (error) {
        fatal("The game's data is in " + utf8(*found) + ", but that folder cannot be entered: " +
              error.message() + ". Move the game to a folder that you may read.");
    }
}

} // namespace dunkman
