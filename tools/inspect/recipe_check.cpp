#include "tools/inspect/recipe_check.h"

#include <algorithm>
#include <array>

#include "tools/inspect/nearest.h"
#include "tools/inspect/property_check.h"
#include "world/arena.h"

namespace dunkman::inspect {

namespace {

constexpr std::string_view typeKey = "_type";
constexpr std::array besidesProperties = {typeKey};

std::optional<ObjectType> typeOf(const Located& recipe) {
    const Located name = recipe.get(typeKey);
    if (name->kind != JsonKind::String) {
        return std::nullopt;
    }
    const auto type = typeFromName(name->stringValue());
    return type != ObjectType::Invalid ? type : std::nullopt;
}

std::vector<std::string_view> typeNames() {
    std::vector<std::string_view> names;
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        names.push_back(typeName(type));
    }
    return names;
}

void reportNoType(const LocatedMember& recipe, Faults& faults) {
    const std::string start = "recipe " + inQuotes(recipe.key) + ": ";
    const Located type = recipe.value.get(typeKey);
    if (recipe.value->kind != JsonKind::Object) {
        faults.add(recipe.value.spot(), start + "it is no object with a \"_type\" and properties, { ... }.");
    } else if (!recipe.value->contains(typeKey)) {
        const std::vector<std::string_view> keys = keysOf(recipe.value);
        const std::string_view mistyped = nearestName(typeKey, keys);
        faults.add(recipe.keySpot(),
                   start + "it has no \"_type\", so it makes no object." +
                       (mistyped.empty() ? "" : " Is it meant by " + inQuotes(mistyped) + '?'));
    } else if (type->kind != JsonKind::String) {
        faults.add(type.spot(), start + "\"_type\" is not the name of a class in quotes.");
    } else {
        faults.add(type.spot(), start + "there is no class " + inQuotes(type->stringValue()) + '.' +
                                    suggestion(type->stringValue(), typeNames()));
    }
}

bool isArenaRecipe(std::string_view name) {
    return std::find(zombieRecipes.begin(), zombieRecipes.end(), name) != zombieRecipes.end();
}

// A recipe that is missing has most likely another name by mistake; otherwise it is a fault of the arena that asks for it.
void reportMissing(std::string_view name, const LocatedMember& arena, const DataFile& recipes,
                   Faults& faults) {
    std::vector<std::string_view> others = keysOf(recipes.top());
    std::erase_if(others, isArenaRecipe);
    const std::string_view mistyped = nearestName(name, others);
    Spot spot = arena.keySpot();
    for (const LocatedMember& recipe : recipes.top().members()) {
        if (!mistyped.empty() && recipe.key == mistyped) {
            spot = recipe.keySpot();
        }
    }
    faults.add(spot, "There is no recipe " + inQuotes(name) + ", which arenas let in." +
                         (mistyped.empty() ? "" : " Is it meant by " + inQuotes(mistyped) + '?'));
}

// Arenas let in by names that stand in no data file.
void checkArenaRecipes(const DataFile& recipes, Faults& faults) {
    const std::vector<LocatedMember> members = recipes.top().members();
    const auto arena = std::find_if(members.begin(), members.end(), [](const LocatedMember& recipe) {
        return typeOf(recipe.value) == ObjectType::Arena;
    });
    for (const std::string_view name : zombieRecipes) {
        const Located recipe = recipes.top().get(name);
        const auto type = typeOf(recipe);
        if (!recipes.top()->contains(name)) {
            if (arena != members.end()) {
                reportMissing(name, *arena, recipes, faults);
            }
        } else if (type && type != ObjectType::Zombie) {
            faults.add(recipe.get(typeKey).spot(),
                       "recipe " + inQuotes(name) + ": arenas let it in and need a Zombie.");
        }
    }
}

} // namespace

void checkRecipes(const LevelFiles& files, Faults& faults) {
    if (!files.recipes.isSound()) {
        return;
    }
    PropertyCheck properties(files.images, faults);
    for (const LocatedMember& recipe : files.recipes.top().members()) {
        if (const auto type = typeOf(recipe.value)) {
            properties.check("recipe " + inQuotes(recipe.key), recipe.value, {*type}, besidesProperties);
        } else {
            reportNoType(recipe, faults);
        }
    }
    checkArenaRecipes(files.recipes, faults);
}

std::optional<ObjectType> typeOfRecipe(const DataFile& recipes, std::string_view name) {
    return typeOf(recipes.top().get(name));
}

} // namespace dunkman::inspect
