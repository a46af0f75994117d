#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tools/inspect/level_files.h"
#include "world/object_type.h"

namespace dunkman::inspect {

// What a list of entries makes, prefabs within prefabs included.
struct Contents {
    std::map<std::string, std::set<ObjectType>, std::less<>> typesByTag;
    std::size_t entryCount = 0; // up to just above maxSceneEntries
    std::size_t depth = 0;      // of the prefabs in it
    bool isKnown = true;        // false: some name in it is unknown, so there may be more

    bool has(ObjectType type) const;
    void add(const Contents& other);
};

// Looks into each prefab once, however often they contain each other.
class PrefabContents {
public:
    // Reports prefabs that contain themselves, lie too deep or make too much.
    PrefabContents(const LevelFiles& levelFiles, Faults& faultList);

    Contents ofEntries(const Located& entries) const;
    bool hasTooLargePrefab() const { return foundTooLarge; }
    const Contents& ofPrefab(std::string_view name) const; // not known when there is no such prefab

private:
    struct Opened;

    void lookInto(std::string_view outermost);
    void reportCycle(const Opened& prefab, std::size_t entry);
    void reportLimits(const LocatedMember& prefab);
    Contents ofEntry(const Located& entry) const;

    const LevelFiles& files;
    Faults& faults;
    std::map<std::string, Contents, std::less<>> known;
    bool foundTooLarge = false;
};

} // namespace dunkman::inspect
