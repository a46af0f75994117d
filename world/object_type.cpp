#include "world/object_type.h"

#include <array>

namespace dunkman {

namespace {

struct TypeRecord {
    std::string_view name;
    ObjectType parent;
};

constexpr std::array<TypeRecord, objectTypeCount> records = {{
    {"Invalid", ObjectType::Invalid},      {"Object", ObjectType::Invalid},
    {"Drawable", ObjectType::Object},      {"Movable", ObjectType::Drawable},
    {"Interactable", ObjectType::Movable}, {"Weapon", ObjectType::Interactable},
    {"Flamingo", ObjectType::Weapon},      {"Projectile", ObjectType::Movable},
    {"RangedWeapon", ObjectType::Weapon},  {"Pineapple", ObjectType::RangedWeapon},
    {"Walker", ObjectType::Movable},       {"Zombie", ObjectType::Walker},
    {"ZombieDead", ObjectType::Drawable},  {"Player", ObjectType::Walker},
    {"Camera", ObjectType::Object},        {"SpawnPoint", ObjectType::Object},
    {"Arena", ObjectType::Object},         {"ResortSign", ObjectType::Drawable},
    {"Wave", ObjectType::Drawable},        {"Hint", ObjectType::Drawable},
}};

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

} // namespace dunkman
