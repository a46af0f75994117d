#pragma once

#include <optional>
#include <string_view>

#include "tools/inspect/level_files.h"
#include "world/object_type.h"

namespace dunkman::inspect {

// Checks the recipes, for arenas too.
void checkRecipes(const LevelFiles& files, Faults& faults);

// The class that a recipe makes; nothing when there is no such recipe or it makes none.
std::optional<ObjectType> typeOfRecipe(const DataFile& recipes, std::string_view name);

} // namespace dunkman::inspect
