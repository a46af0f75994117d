#pragma once

#include <string_view>
#include <vector>

#include "tools/inspect/data_file.h"

namespace dunkman::inspect {

// The files that make a level. What refers to a file that is not sound is not looked up.
struct LevelFiles {
    const DataFile& images;
    const DataFile& recipes;
    const DataFile& prefabs;
    const DataFile& scene;
};

// The keys of an object.
inline std::vector<std::string_view> keysOf(const Located& object) {
    std::vector<std::string_view> keys;
    for (const LocatedMember& member : object.members()) {
        keys.push_back(member.key);
    }
    return keys;
}

} // namespace dunkman::inspect
