#include "tools/inspect/entry_check.h"

#include <algorithm>
#include <array>

#include "tools/inspect/nearest.h"
#include "tools/inspect/recipe_check.h"
#include "world/scene_entry.h"
#include "world/scene_limits.h"

namespace dunkman::inspect {

namespace {

constexpr std::array prefabOnly = {scene_entry::prefab.key, scene_entry::offset.key,
                                   scene_entry::overrides.key};
constexpr std::array besidesProperties = {scene_entry::recipe.key, scene_entry::tag.key,
                                          scene_entry::prefab.key, scene_entry::offset.key,
                                          scene_entry::overrides.key};
constexpr std::array prefabMembers = {scene_entry::prefab.key, scene_entry::tag.key, scene_entry::offset.key,
                                      scene_entry::overrides.key};

std::string entryName(const std::string& listName, std::size_t number, const Located& entry) {
    std::string name = listName + "entry " + std::to_string(number);
    for (const EntryMember& member : {scene_entry::recipe, scene_entry::prefab}) {
        const Located made = entry.get(member.key);
        if (made->kind == JsonKind::String) {
            return name + " (" + std::string(member.key) + ' ' + inQuotes(made->stringValue()) + ')';
        }
    }
    return name;
}

} // namespace

void EntryCheck::checkPrefabs() {
    if (!files.prefabs.isSound()) {
        return;
    }
    for (const LocatedMember& prefab : files.prefabs.top().members()) {
        const std::string name = "prefab " + inQuotes(prefab.key);
        if (prefab.value->kind != JsonKind::Array) {
            faults.add(prefab.value.spot(), name + ": it is no array of entries, [ ... ].");
        }
        checkEntries(name + ", ", prefab.value);
    }
}

void EntryCheck::checkScene() {
    if (!files.scene.isSound()) {
        return;
    }
    checkEntries("", files.scene.top());
    const Contents scene = contents.ofEntries(files.scene.top());
    if (scene.entryCount > maxSceneEntries && !contents.hasTooLargePrefab()) {
        faults.add(files.scene.top().spot(), "With the prefabs in it the scene has more than " +
                                                 std::to_string(maxSceneEntries) + " entries.");
    }
    if (scene.isKnown) {
        requireInScene(scene, ObjectType::Player);
        requireInScene(scene, ObjectType::Camera);
    }
}

void EntryCheck::requireInScene(const Contents& scene, ObjectType type) {
    if (!scene.has(type)) {
        faults.add(files.scene.top().spot(), "The scene has no " + std::string(typeName(type)) +
                                                 ". The game needs one: add an entry whose recipe makes it.");
    }
}

void EntryCheck::checkEntries(const std::string& listName, const Located& entries) {
    std::size_t number = 0;
    for (const Located& entry : entries.elements()) {
        checkEntry(entryName(listName, ++number, entry), entry);
    }
}

void EntryCheck::checkEntry(const std::string& name, const Located& entry) {
    if (entry->kind != JsonKind::Object) {
        faults.add(entry.spot(), name + ": it is no object with members, { ... }.");
        return;
    }
    const Located tag = entry.get(scene_entry::tag.key);
    if (entry->contains(scene_entry::tag.key) && tag->kind != JsonKind::String) {
        faults.add(tag.spot(), name + ": a tag is a text in quotes; anything else is passed over.");
    }
    const Located recipe = entry.get(scene_entry::recipe.key);
    const Located prefab = entry.get(scene_entry::prefab.key);
    if (recipe->kind == JsonKind::String) {
        checkRecipeEntry(name, entry);
    } else if (entry->contains(scene_entry::recipe.key)) {
        faults.add(recipe.spot(), name + ": \"recipe\" is not the name of a recipe in quotes.");
    } else if (prefab->kind == JsonKind::String) {
        checkPrefabEntry(name, entry);
    } else if (entry->contains(scene_entry::prefab.key)) {
        faults.add(prefab.spot(), name + ": \"prefab\" is not the name of a prefab in quotes.");
    } else {
        std::string meant;
        for (const LocatedMember& member : entry.members()) {
            constexpr std::array makers = {scene_entry::recipe.key, scene_entry::prefab.key};
            meant = meant.empty() ? suggestion(member.key, makers) : meant;
        }
        faults.add(entry.spot(), name + ": it names neither a recipe nor a prefab." + meant);
    }
}

void EntryCheck::checkRecipeEntry(const std::string& name, const Located& entry) {
    const Located recipe = entry.get(scene_entry::recipe.key);
    if (!files.recipes.isSound()) {
        return;
    }
    if (!files.recipes.top()->contains(recipe->stringValue())) {
        faults.add(recipe.spot(), name + ": there is no such recipe in recipes.json5." +
                                      suggestion(recipe->stringValue(), keysOf(files.recipes.top())));
        return;
    }
    const auto type = typeOfRecipe(files.recipes, recipe->stringValue());
    if (!type) {
        return; // told where the recipe stands
    }
    for (const LocatedMember& member : entry.members()) {
        const bool isForPrefabs =
            std::find(prefabOnly.begin(), prefabOnly.end(), member.key) != prefabOnly.end();
        if (isForPrefabs && findField(*type, member.key) == nullptr) {
            faults.add(member.keySpot(),
                       name + ": " + inQuotes(member.key) + " does nothing beside a recipe.");
        }
    }
    properties.check(name, entry, {*type}, besidesProperties);
}

void EntryCheck::checkPrefabEntry(const std::string& name, const Located& entry) {
    const Located prefab = entry.get(scene_entry::prefab.key);
    checkPrefabMembers(name, entry);
    if (!files.prefabs.isSound()) {
        return;
    }
    if (!files.prefabs.top()->contains(prefab->stringValue())) {
        faults.add(prefab.spot(), name + ": there is no such prefab in prefabs.json5." +
                                      suggestion(prefab->stringValue(), keysOf(files.prefabs.top())));
        return;
    }
    if (entry->contains(scene_entry::overrides.key)) {
        checkOverrides(name, entry.get(scene_entry::overrides.key), contents.ofPrefab(prefab->stringValue()));
    }
}

void EntryCheck::checkPrefabMembers(const std::string& name, const Located& entry) {
    if (entry->contains(scene_entry::offset.key)) {
        properties.checkPair(name, scene_entry::offset.key, entry.get(scene_entry::offset.key));
    }
    for (const LocatedMember& member : entry.members()) {
        if (std::find(prefabMembers.begin(), prefabMembers.end(), member.key) == prefabMembers.end()) {
            faults.add(member.keySpot(),
                       name + ": " + inQuotes(member.key) +
                           " does nothing beside a prefab; \"overrides\" reach what it makes." +
                           suggestion(member.key, prefabMembers));
        }
    }
}

void EntryCheck::checkOverrides(const std::string& name, const Located& overrides, const Contents& prefab) {
    if (overrides->kind != JsonKind::Object) {
        faults.add(overrides.spot(), name + ": \"overrides\" is no object of properties by tag, { ... }.");
        return;
    }
    std::vector<std::string_view> tags;
    for (const auto& [tag, types] : prefab.typesByTag) {
        tags.push_back(tag);
    }
    for (const LocatedMember& override : overrides.members()) {
        const std::string overrideName = name + ", override of " + inQuotes(override.key);
        const auto group = prefab.typesByTag.find(override.key);
        if (group != prefab.typesByTag.end()) {
            properties.check(overrideName, override.value, group->second, {});
        } else if (prefab.isKnown) {
            faults.add(override.keySpot(), overrideName + ": nothing in the prefab has this tag." +
                                               suggestion(override.key, tags));
        }
        if (override.value->kind != JsonKind::Object) {
            faults.add(override.value.spot(), overrideName + ": it is no object of properties, { ... }.");
        }
    }
}

} // namespace dunkman::inspect
