#include "tools/inspect/prefab_contents.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "tools/inspect/recipe_check.h"
#include "world/scene_entry.h"
#include "world/scene_limits.h"

namespace dunkman::inspect {

namespace {

// The prefab that an entry places, if it places one.
std::optional<std::string_view> prefabOf(const Located& entry) {
    const Located prefab = entry.get(scene_entry::prefab.key);
    const bool placesOne =
        entry.get(scene_entry::recipe.key)->kind != JsonKind::String && prefab->kind == JsonKind::String;
    return placesOne ? std::optional(prefab->stringValue()) : std::nullopt;
}

Contents makeUnknown() {
    Contents contents;
    contents.isKnown = false;
    return contents;
}

} // namespace

bool Contents::has(ObjectType type) const {
    return std::any_of(typesByTag.begin(), typesByTag.end(),
                       [type](const auto& group) { return group.second.contains(type); });
}

void Contents::add(const Contents& other) {
    for (const auto& [tag, types] : other.typesByTag) {
        typesByTag[tag].insert(types.begin(), types.end());
    }
    entryCount = std::min(entryCount + other.entryCount, maxSceneEntries + 1);
    depth = std::max(depth, other.depth);
    isKnown = isKnown && other.isKnown;
}

// A prefab that is being looked into, once all those are known that it contains.
struct PrefabContents::Opened {
    std::string_view name;
    std::vector<Located> entries;
    std::size_t next = 0; // the first entry whose prefab has not been looked into
};

PrefabContents::PrefabContents(const LevelFiles& levelFiles, Faults& faultList)
    : files(levelFiles), faults(faultList) {
    if (!files.prefabs.isSound()) {
        return;
    }
    const std::vector<LocatedMember> prefabs = files.prefabs.top().members();
    for (const LocatedMember& prefab : prefabs) {
        lookInto(prefab.key);
    }
    for (const LocatedMember& prefab : prefabs) {
        reportLimits(prefab);
    }
}

// With a list of its own instead of recursion: prefabs may lie deeper than any stack.
void PrefabContents::lookInto(std::string_view outermost) {
    std::vector<Opened> open;
    std::set<std::string_view> openNames;
    const auto openPrefab = [&](std::string_view name) {
        open.push_back({name, files.prefabs.top().get(name).elements()});
        openNames.insert(name);
    };
    if (!known.contains(outermost)) {
        openPrefab(outermost);
    }
    while (!open.empty()) {
        Opened& prefab = open.back();
        if (prefab.next == prefab.entries.size()) {
            Contents contents;
            for (const Located& entry : prefab.entries) {
                contents.add(ofEntry(entry));
            }
            ++contents.depth;
            known[std::string(prefab.name)] = std::move(contents);
            openNames.erase(prefab.name);
            open.pop_back();
            continue;
        }
        const std::size_t entry = prefab.next++;
        const auto inner = prefabOf(prefab.entries[entry]);
        if (inner && openNames.contains(*inner)) {
            reportCycle(prefab, entry);
        } else if (inner && files.prefabs.top()->contains(*inner) && !known.contains(*inner)) {
            openPrefab(*inner);
        }
    }
}

void PrefabContents::reportCycle(const Opened& prefab, std::size_t entry) {
    const Located place = prefab.entries[entry].get(scene_entry::prefab.key);
    faults.add(place.spot(), "prefab " + inQuotes(prefab.name) + ", entry " + std::to_string(entry + 1) +
                                 ": the prefab " + inQuotes(place->stringValue()) +
                                 " contains itself this way.");
}

// Only of the innermost prefab that breaks a limit: those around it cannot help it.
void PrefabContents::reportLimits(const LocatedMember& prefab) {
    const Contents& contents = known.find(prefab.key)->second;
    Contents inner;
    for (const Located& entry : prefab.value.elements()) {
        if (const auto name = prefabOf(entry)) {
            inner.depth = std::max(inner.depth, ofPrefab(*name).depth);
            inner.entryCount = std::max(inner.entryCount, ofPrefab(*name).entryCount);
        }
    }
    if (contents.depth > maxPrefabDepth && inner.depth <= maxPrefabDepth) {
        faults.add(prefab.keySpot(), "prefab " + inQuotes(prefab.key) + ": it has more than " +
                                         std::to_string(maxPrefabDepth) + " prefabs within prefabs.");
    }
    if (contents.entryCount > maxSceneEntries && inner.entryCount <= maxSceneEntries) {
        foundTooLarge = true;
        faults.add(prefab.keySpot(), "prefab " + inQuotes(prefab.key) +
                                         ": with the prefabs in it, it has more than " +
                                         std::to_string(maxSceneEntries) + " entries.");
    }
}

Contents PrefabContents::ofEntries(const Located& entries) const {
    Contents contents;
    for (const Located& entry : entries.elements()) {
        contents.add(ofEntry(entry));
    }
    return contents;
}

const Contents& PrefabContents::ofPrefab(std::string_view name) const {
    static const Contents unknown = makeUnknown();
    const auto found = known.find(name);
    return found != known.end() ? found->second : unknown;
}

Contents PrefabContents::ofEntry(const Located& entry) const {
    const Located recipe = entry.get(scene_entry::recipe.key);
    if (recipe->kind != JsonKind::String) {
        const auto prefab = prefabOf(entry);
        Contents contents = prefab ? ofPrefab(*prefab) : makeUnknown();
        ++contents.entryCount;
        return contents;
    }
    const auto type =
        files.recipes.isSound() ? typeOfRecipe(files.recipes, recipe->stringValue()) : std::nullopt;
    Contents contents = type ? Contents() : makeUnknown();
    contents.entryCount = 1;
    if (!type) {
        return contents;
    }
    const Located tag = entry.get(scene_entry::tag.key);
    const std::string tagName(tag->kind == JsonKind::String ? tag->stringValue() : std::string_view());
    contents.typesByTag[tagName].insert(*type);
    return contents;
}

} // namespace dunkman::inspect
