#include "world/object_type.h"

#include <array>

namespace dunkman {

namespace {

struct TypeRecord {
    std::size_t number;
    std::string_view name;
    ObjectType parent;
};

constexpr std::array<TypeRecord, objectTypeCount> records = {{
    {0, "Invalid", ObjectType::Invalid},
#define OBJECT_TYPE(number, name, parent) {number, #name, ObjectType::parent},
#include "world/object_types.inc"
#undef OBJECT_TYPE
}};

constexpr bool rowsStandInOrder() {
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        if (records[number].number != number || indexOf(records[number].parent) > number) {
            return false;
        }
    }
    return true;
}

static_assert(rowsStandInOrder(), "object_types.inc: numbers without a gap, parents above their children");

struct TypeList {
    std::array<ObjectType, objectTypeCount> types{};
    std::size_t count = 0;

    constexpr void append(ObjectType type) { types[count++] = type; }
    constexpr std::span<const ObjectType> span() const { return {types.data(), count}; }
};

using TypeLists = std::array<TypeList, objectTypeCount>;

constexpr TypeLists makeChildLists() {
    TypeLists lists{};
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        lists[indexOf(records[number].parent)].append(static_cast<ObjectType>(number));
    }
    lists[indexOf(ObjectType::Invalid)].count = 0;
    return lists;
}

constexpr TypeLists childLists = makeChildLists();

constexpr TypeLists makeWalks() {
    TypeLists walks{};
    for (std::size_t start = 0; start < objectTypeCount; ++start) {
        TypeList& walk = walks[start];
        walk.append(static_cast<ObjectType>(start));
        for (std::size_t visited = 0; visited < walk.count; ++visited) {
            const TypeList& children = childLists[indexOf(walk.types[visited])];
            for (std::size_t child = 0; child < children.count; ++child) {
                walk.append(children.types[child]);
            }
        }
    }
    return walks;
}

constexpr TypeLists walks = makeWalks();

constexpr TypeLists makeLineages() {
    TypeLists lineages{};
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        // A parent's number is the lower one, so its lineage is there already.
        lineages[number] = lineages[indexOf(records[number].parent)];
        lineages[number].append(static_cast<ObjectType>(number));
    }
    return lineages;
}

constexpr TypeLists lineages = makeLineages();

} // namespace

std::string_view typeName(ObjectType type) { return records[indexOf(type)].name; }

std::optional<ObjectType> typeFromName(std::string_view name) {
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        if (records[number].name == name) {
            return static_cast<ObjectType>(number);
        }
    }
    return std::nullopt;
}

ObjectType parentType(ObjectType type) { return records[indexOf(type)].parent; }

std::span<const ObjectType> childTypes(ObjectType type) { return childLists[indexOf(type)].span(); }

std::span<const ObjectType> subtypeWalk(ObjectType start) { return walks[indexOf(start)].span(); }

std::span<const ObjectType> lineage(ObjectType type) { return lineages[indexOf(type)].span(); }

} // namespace dunkman
