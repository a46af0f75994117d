#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include "base/key_states.h"
#include "tools/inspect/faults.h"
#include "world/arena.h"
#include "world/object_class.h"
#include "world/scene_entry.h"

namespace dunkman::inspect {

namespace {

bool belongsToRecipeEntry(std::string_view key) {
    return std::any_of(scene_entry::members.begin(), scene_entry::members.end(),
                       [&](const EntryMember& member) { return member.inRecipeEntry && member.key == key; });
}

bool belongsToPrefabEntry(std::string_view key) {
    return std::any_of(scene_entry::members.begin(), scene_entry::members.end(),
                       [&](const EntryMember& member) { return member.inPrefabEntry && member.key == key; });
}

class ObjectCheck {
public:
    ObjectCheck(const JsonValue& knownImages, const JsonValue& knownRecipes, const JsonValue& knownPrefabs,
                Faults& faultList)
        : images(knownImages), recipes(knownRecipes), prefabs(knownPrefabs), faults(faultList) {}

    // A property object against the class that it is for.
    void checkProperties(std::string_view file, const std::string& name, const JsonValue& properties,
                         ObjectType type) {
        for (const JsonMember& member : properties.objectValue()) {
            if (member.key() == "_type" || belongsToRecipeEntry(member.key())) {
                continue;
            }
            const Field* field = findField(type, member.key());
            if (field == nullptr) {
                faults.add(file, name + ": a " + std::string(typeName(type)) + " has no property " +
                                     quoted(member.key()) + ".");
            } else if (!accepts(field->kind, member.value)) {
                faults.add(file, name + ": the value of " + quoted(member.key()) +
                                     " is of a kind that is passed over.");
            } else if (member.key() == "imageKey" && !images.contains(member.value.stringValue())) {
                faults.add(file, name + ": there is no image " + quoted(member.value.stringValue()) + ".");
            }
        }
    }

    // The class that a recipe makes; Invalid, with a fault, when it makes none.
    ObjectType recipeType(std::string_view file, std::string_view name) {
        const JsonValue* recipe = recipes.find(name);
        if (recipe == nullptr) {
            faults.add(file, "There is no recipe " + quoted(name) + ".");
            return ObjectType::Invalid;
        }
        const auto type = typeFromName(recipe->get("_type").stringValue());
        return type.value_or(ObjectType::Invalid);
    }

    void checkRecipes() {
        for (const JsonMember& recipe : recipes.objectValue()) {
            const std::string name = "recipe " + quoted(recipe.key());
            const JsonValue& typeMember = recipe.value.get("_type");
            const auto type = typeFromName(typeMember.stringValue());
            if (recipe.value.kind != JsonKind::Object || typeMember.kind != JsonKind::String || !type ||
                *type == ObjectType::Invalid) {
                faults.add("recipes.json5",
                           name + ": \"_type\" names no class, so the recipe makes no object.");
                continue;
            }
            checkProperties("recipes.json5", name, recipe.value, *type);
        }
        checkArenaRecipes();
    }

    void checkPrefabs() {
        for (const JsonMember& prefab : prefabs.objectValue()) {
            if (prefab.value.kind != JsonKind::Array) {
                faults.add("prefabs.json5", "prefab " + quoted(prefab.key()) + " is no array of entries.");
            }
            checkEntries("prefabs.json5", "prefab " + quoted(prefab.key()), prefab.value);
            path.clear();
            checkCycle(prefab.key());
        }
    }

    // Answers the classes that the entries themselves make.
    void checkEntries(std::string_view file, const std::string& where, const JsonValue& entries) {
        std::size_t number = 0;
        for (const JsonValue& entry : entries.arrayValue()) {
            checkEntry(file, where + ", entry " + std::to_string(number++), entry);
        }
    }

    // The classes of everything that an entry list makes, prefabs expanded.
    void collectTypes(const JsonValue& entries, std::set<ObjectType>& types, int depth = 0) {
        for (const JsonValue& entry : entries.arrayValue()) {
            if (entry.get("recipe").kind == JsonKind::String) {
                const JsonValue& recipe = recipes.get(entry.get("recipe").stringValue());
                types.insert(typeFromName(recipe.get("_type").stringValue()).value_or(ObjectType::Invalid));
            } else if (depth < maxDepth) {
                collectTypes(prefabs.get(entry.get("prefab").stringValue()), types, depth + 1);
            }
        }
    }

private:
    // Arenas spawn by names that stand in no data file.
    void checkArenaRecipes() {
        bool hasArena = false;
        for (const JsonMember& recipe : recipes.objectValue()) {
            hasArena = hasArena || typeFromName(recipe.value.get("_type").stringValue()) == ObjectType::Arena;
        }
        for (const std::string_view name : zombieRecipes) {
            const JsonValue* recipe = recipes.find(name);
            if (recipe == nullptr && hasArena) {
                faults.add("recipes.json5",
                           "There is no recipe \"" + std::string(name) + "\", which arenas spawn.");
            } else if (recipe != nullptr &&
                       typeFromName(recipe->get("_type").stringValue()) != ObjectType::Zombie) {
                faults.add("recipes.json5",
                           "recipe \"" + std::string(name) + "\": arenas need a Zombie from it.");
            }
        }
    }

    static constexpr int maxDepth = 32; // of nested prefabs, against cycles

    static bool accepts(FieldKind kind, const JsonValue& value) {
        switch (kind) {
        case FieldKind::Number:
        case FieldKind::Timer:
            return value.isNumber();
        case FieldKind::WholeNumber:
            return value.kind == JsonKind::Integer;
        case FieldKind::Flag:
            return value.kind == JsonKind::Bool;
        case FieldKind::Text:
            return value.kind == JsonKind::String;
        case FieldKind::Pair:
            return value.isNumber() || (value.kind == JsonKind::Array && value.arrayValue().size() == 2 &&
                                        value.arrayValue()[0].isNumber() && value.arrayValue()[1].isNumber());
        }
        return false;
    }

    void checkEntry(std::string_view file, const std::string& where, const JsonValue& entry) {
        if (entry.get("recipe").kind == JsonKind::String) {
            const ObjectType type = recipeType(file, entry.get("recipe").stringValue());
            if (type != ObjectType::Invalid) {
                checkProperties(file, where, entry, type);
            }
            return;
        }
        if (entry.get("prefab").kind != JsonKind::String) {
            faults.add(file, where + " names neither a recipe nor a prefab.");
            return;
        }
        const std::string_view prefab = entry.get("prefab").stringValue();
        if (!prefabs.contains(prefab)) {
            faults.add(file, where + ": there is no prefab " + quoted(prefab) + ".");
        }
        for (const JsonMember& member : entry.objectValue()) {
            if (!belongsToPrefabEntry(member.key())) {
                faults.add(file, where + ": " + quoted(member.key()) + " does nothing in a prefab entry.");
            }
        }
        checkOverrides(file, where, entry, prefabs.get(prefab));
    }

    void checkOverrides(std::string_view file, const std::string& where, const JsonValue& entry,
                        const JsonValue& prefab) {
        for (const JsonMember& override : entry.get("overrides").objectValue()) {
            bool reached = false;
            for (const JsonValue& inner : prefab.arrayValue()) {
                const bool isNested = inner.get("recipe").kind != JsonKind::String;
                reached = reached || isNested || inner.get("tag").stringValue() == override.key();
            }
            if (!reached) {
                faults.add(file,
                           where + ": no object of the prefab has the tag " + quoted(override.key()) + ".");
            }
        }
    }

    void checkCycle(std::string_view prefab) {
        if (std::find(path.begin(), path.end(), prefab) != path.end()) {
            if (path.front() == prefab) {
                faults.add("prefabs.json5", "prefab " + quoted(prefab) + " contains itself.");
            }
            return;
        }
        path.emplace_back(prefab);
        for (const JsonValue& entry : prefabs.get(prefab).arrayValue()) {
            if (entry.get("recipe").kind != JsonKind::String &&
                entry.get("prefab").kind == JsonKind::String) {
                checkCycle(entry.get("prefab").stringValue());
            }
        }
        path.pop_back();
    }

    const JsonValue& images;
    const JsonValue& recipes;
    const JsonValue& prefabs;
    Faults& faults;
    std::vector<std::string> path; // prefabs being expanded
};

} // namespace

void checkObjects(const JsonValue& images, const JsonValue& recipes, const JsonValue& prefabs,
                  const JsonValue& scene, Faults& faults) {
    ObjectCheck check(images, recipes, prefabs, faults);
    check.checkRecipes();
    check.checkPrefabs();
    check.checkEntries("scene.json5", "scene", scene);
    std::set<ObjectType> types;
    check.collectTypes(scene, types);
    if (!types.contains(ObjectType::Player)) {
        faults.add("scene.json5", "The scene has no Player; the game stops without one.");
    }
    if (!types.contains(ObjectType::Camera)) {
        faults.add("scene.json5", "The scene has no Camera.");
    }
}

void checkRecording(const JsonValue& recording, Faults& faults) {
    std::int64_t previous = -1;
    std::size_t number = 0;
    for (const JsonValue& record : recording.arrayValue()) {
        const std::string where = "record " + std::to_string(number++);
        const JsonValue& frame = record.get("frame");
        if (frame.kind != JsonKind::Integer || frame.intValue() <= previous) {
            faults.add("recording.json5",
                       where + ": \"frame\" is no integer above the record before it, so the replay "
                               "never gets past it.");
        }
        previous = std::max(previous, frame.intValue());
        for (const JsonValue& change : record.get("newKeyStates").arrayValue()) {
            const JsonValue& key = change.get("key");
            const JsonValue& state = change.get("state");
            if (key.kind != JsonKind::Integer ||
                std::find(polledKeys.begin(), polledKeys.end(), key.intValue()) == polledKeys.end()) {
                faults.add("recording.json5", where + ": \"key\" is none of the keys that the game knows.");
            }
            if (state.kind != JsonKind::Integer || state.intValue() < 0 || state.intValue() > 3) {
                faults.add("recording.json5", where + ": \"state\" is no number from 0 to 3.");
            }
        }
    }
}

} // namespace dunkman::inspect
