#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace dunkman {

// The kinds of world object, as object_types.inc lists them.
enum class ObjectType : std::int32_t {
    Invalid = 0,
#define OBJECT_TYPE(number, name, parent) name = number,
#include "world/object_types.inc"
#undef OBJECT_TYPE
};

// Invalid included.
inline constexpr std::size_t objectTypeCount = 1
#define OBJECT_TYPE(number, name, parent) +1
#include "world/object_types.inc"
#undef OBJECT_TYPE
    ;

// Of enumerators only.
constexpr std::size_t indexOf(ObjectType type) {
    assert(static_cast<std::size_t>(type) < objectTypeCount);
    return static_cast<std::size_t>(type);
}

// All functions below read constant data, so they answer rightly at any moment of start-up. They take
// enumerators only.

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

// Object, then one class after another down to `type` itself: the order in which fields are read and written.
// Nothing for Invalid.
std::span<const ObjectType> lineage(ObjectType type);

} // namespace dunkman
