#pragma once

#include <map>
#include <string>
#include <vector>

#include "json5/value.h"

namespace dunkman {

class Object;

// The objects that a list of scene entries made, by tag. They belong to the world, which has them queued.
using TaggedObjects = std::map<std::string, std::vector<Object*>>;

// Makes the objects of an array of scene entries from recipes and prefabs of the asset catalogue and queues
// them into the world, in the order of the entries. Stops the game when an entry names no known recipe or
// prefab, when a recipe makes no object, when a prefab contains itself, and beyond the bounds of scene_limits.h.
TaggedObjects loadGroup(const JsonValue& entries);

// Fills the world from "scene.json5". Does not empty it first. A missing or malformed file gives an empty or
// partial scene.
void loadScene();

} // namespace dunkman
