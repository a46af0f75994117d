#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace dunkman {

// The kinds of world object. The numbers are fixed: they index tables, order the buckets of the world and
// with that the order of updates.
enum class ObjectType : std::int32_t {
    Invalid = 0,
    Object = 1,
    Drawable = 2,
    Movable = 3,
    Interactable = 4,
    Weapon = 5,
    Flamingo = 6,
    Projectile = 7,
    RangedWeapon = 8,
    Pineapple = 9,
    Walker = 10,
    Zombie = 11,
    ZombieDead = 12,
    Player = 13,
    Camera = 14,
    SpawnPoint = 15,
    Arena = 16,
    ResortSign = 17,
    Wave = 18,
    Hint = 19,
};

inline constexpr std::size_t objectTypeCount = 20;

constexpr std::size_t indexOf(ObjectType type) { return static_cast<std::size_t>(type); }

// All functions below read constant data, so they answer rightly at any moment of start-up. They take the
// twenty enumerators only.

// The name that data files use in `_type`.
std::string_view typeName(ObjectType type);

// Exact bytes, case-sensitive. Nothing for an unknown name; "Invalid" is a known one.
std::optional<ObjectType> typeFromName(std::string_view name);

// Invalid for Object and for Invalid itself.
ObjectType parentType(ObjectType type);

// Direct subtypes in ascending number. Invalid has none, so neither Invalid nor Object is anybody's child.
std::span<const ObjectType> childTypes(ObjectType type);

// `start`, then all its subtypes breadth first: the order of drawing and of every query for a kind of object.
std::span<const ObjectType> subtypeWalk(ObjectType start);

} // namespace dunkman
