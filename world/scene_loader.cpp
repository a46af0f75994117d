#include "world/scene_loader.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "assets/catalog.h"
#include "base/fatal.h"
#include "base/geometry.h"
#include "json5/data_file.h"
#include "world/object.h"
#include "world/registry.h"
#include "world/scene_entry.h"
#include "world/scene_limits.h"
#include "world/world.h"

namespace dunkman {

namespace {

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// One loading of a list of entries, prefabs within prefabs included.
class GroupLoader {
public:
    TaggedObjects load(const JsonValue& entries) {
        TaggedObjects result;
        std::size_t number = 0;
        for (const JsonValue& entry : entries.asArray()) {
            ++number;
            countEntry();
            entry.asObject(); // only to report another kind; such an entry has no members
            const JsonValue& tag = entry.get(scene_entry::tag.key);
            const std::string tagName(tag.kind == JsonKind::String ? tag.stringValue() : std::string_view());
            std::vector<Object*>& filed = result[tagName];
            const JsonValue& recipe = entry.get(scene_entry::recipe.key);
            if (recipe.kind == JsonKind::String) {
                filed.push_back(makeFromRecipe(recipe.stringValue(), entry, number));
            } else {
                placePrefab(entry, number, tagName, result);
            }
        }
        return result;
    }

private:
    // The list that is being read, as messages name it.
    std::string listName() const {
        return openPrefabs.empty() ? "scene.json5"
                                   : "the prefab " + quoted(openPrefabs.back()) + " of prefabs.json5";
    }

    std::string entryName(std::size_t number) const {
        return "entry " + std::to_string(number) + " of " + listName();
    }

    void countEntry() {
        if (++entryCount > maxSceneEntries) {
            fatal("The scene has more than " + std::to_string(maxSceneEntries) +
                  " entries, those of its prefabs counted every time that one is placed. The one too many "
                  "is in " +
                  listName() +
                  ". Place fewer; most of all look for prefabs that contain others several times.");
        }
    }

    Object* makeFromRecipe(std::string_view name, const JsonValue& entry, std::size_t number) {
        const JsonValue* recipe = assetCatalog.recipes.find(name);
        if (recipe == nullptr) {
            fatal("The recipe " + quoted(name) + ", which " + entryName(number) +
                  " asks for, is unknown. Add it to recipes.json5 or correct the name.");
        }
        return namingPlace(
            [&] { return "The recipe " + quoted(name) + " is used in " + entryName(number) + "."; },
            [&] {
                OwnedObject made = createFromValue(*recipe);
                if (!made) {
                    fatal("The recipe " + quoted(name) +
                          " makes no object. Give it a _type that names a kind of object in recipes.json5.");
                }
                made->readProperties(entry);
                Object* object = made.get();
                world.queueAdd(std::move(made));
                return object;
            });
    }

    void placePrefab(const JsonValue& entry, std::size_t number, const std::string& tagName,
                     TaggedObjects& result) {
        const JsonValue& name = entry.get(scene_entry::prefab.key);
        if (name.kind != JsonKind::String) {
            fatal("A scene entry with the tag " + quoted(tagName) + ", " + entryName(number) +
                  ", names neither a recipe nor a prefab. Give it one of the two.");
        }
        const JsonValue* prefab = assetCatalog.prefabs.find(name.stringValue());
        if (prefab == nullptr) {
            fatal("A scene entry with the tag " + quoted(tagName) + ", " + entryName(number) +
                  ", names the prefab " + quoted(name.stringValue()) +
                  ", which is unknown. Add it to prefabs.json5 or correct the name.");
        }
        const TaggedObjects inner = loadPrefab(name.stringValue(), *prefab);

        Vec2 offset;
        readPair(entry.get(scene_entry::offset.key), offset.x, offset.y);
        const JsonValue& overrides = entry.get(scene_entry::overrides.key);
        for (const auto& group : inner) {
            const JsonValue* override =
                overrides.kind == JsonKind::Object ? overrides.find(group.first) : nullptr;
            std::vector<Object*>& filed = result[group.first];
            for (Object* object : group.second) {
                // Before the override, which may replace the shifted position.
                object->position.x += offset.x;
                object->position.y += offset.y;
                if (override != nullptr && override->kind == JsonKind::Object) {
                    namingPlace(
                        [&] {
                            return "It is set by the overrides for the tag " + quoted(group.first) + " in " +
                                   entryName(number) + ".";
                        },
                        [&] { object->readProperties(*override); });
                }
                filed.push_back(object);
            }
        }
    }

    TaggedObjects loadPrefab(std::string_view name, const JsonValue& prefab) {
        if (std::find(openPrefabs.begin(), openPrefabs.end(), name) != openPrefabs.end()) {
            fatal("The prefab " + quoted(name) +
                  " contains itself. Remove the entry in prefabs.json5 that leads back to it.");
        }
        if (openPrefabs.size() == maxPrefabDepth) {
            fatal("The prefab " + quoted(name) + " lies more than " + std::to_string(maxPrefabDepth) +
                  " prefabs deep, in " + listName() + ". Place what it holds in fewer steps.");
        }
        openPrefabs.emplace_back(name);
        TaggedObjects inner = load(prefab);
        openPrefabs.pop_back();
        return inner;
    }

    std::vector<std::string> openPrefabs; // those being loaded, the outermost first
    std::size_t entryCount = 0;           // so far, over all lists
};

} // namespace

TaggedObjects loadGroup(const JsonValue& entries) { return GroupLoader().load(entries); }

void loadScene() {
    const std::string path = "scene.json5";
    const JsonValue entries = loadDataFile(path);
    namingFile(path, [&entries] { loadGroup(entries); });
    world.applyPending();
}

} // namespace dunkman
