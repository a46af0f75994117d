#pragma once

#include <string>

#include "tools/inspect/prefab_contents.h"
#include "tools/inspect/property_check.h"

namespace dunkman::inspect {

// Checks the entries of prefabs and of the scene.
class EntryCheck {
public:
    EntryCheck(const LevelFiles& levelFiles, const PrefabContents& prefabContents, Faults& faultList)
        : files(levelFiles), contents(prefabContents), properties(levelFiles.images, faultList),
          faults(faultList) {}

    void checkPrefabs();
    void checkScene();

private:
    void checkEntries(const std::string& listName, const Located& entries);
    void checkEntry(const std::string& name, const Located& entry);
    void checkRecipeEntry(const std::string& name, const Located& entry);
    void checkPrefabEntry(const std::string& name, const Located& entry);
    void checkPrefabMembers(const std::string& name, const Located& entry);
    void checkOverrides(const std::string& name, const Located& overrides, const Contents& prefab);
    void requireInScene(const Contents& scene, ObjectType type);

    const LevelFiles& files;
    const PrefabContents& contents;
    PropertyCheck properties;
    Faults& faults;
};

} // namespace dunkman::inspect
