#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "json5/value.h"

namespace dunkman::inspect {

// Collects what is wrong, in the order in which it is found.
class Faults {
public:
    void add(std::string_view file, std::string_view message) {
        lines.push_back(std::string(file) + ": " + std::string(message));
    }

    std::vector<std::string> lines;
};

inline std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

// Reads a data file and reports syntax faults, numbers that do not fit, a top level of another kind than
// wanted, and keys that begin or end in white space. Answers what the game would read; Null where reading
// throws.
JsonValue readDataFile(const std::string& path, JsonKind wantedTop, Faults& faults);

// Checks that need the files of the whole directory.
void checkImages(const JsonValue& images, Faults& faults);
void checkShaders(Faults& faults);
void checkMusic(Faults& faults);
void checkObjects(const JsonValue& images, const JsonValue& recipes, const JsonValue& prefabs,
                  const JsonValue& scene, Faults& faults);
void checkRecording(const JsonValue& recording, Faults& faults);

} // namespace dunkman::inspect
