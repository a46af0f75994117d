#include "world/object_type.h"

#include <gmock/gmock.h>

#include <vector>

namespace dunkman {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TypeCase {
    int number;
    const char* name;
    int parent;
};

// The kinds whose order recordings rely on. A kind that is added stands behind them and moves none of them.
constexpr TypeCase typeCases[] = {
    {0, "Invalid", 0},      {1, "Object", 0},      {2, "Drawable", 1}, {3, "Movable", 2},
    {4, "Interactable", 3}, {5, "Weapon", 4},      {6, "Flamingo", 5}, {7, "Projectile", 3},
    {8, "RangedWeapon", 5}, {9, "Pineapple", 8},   {10, "Walker", 3},  {11, "Zombie", 10},
    {12, "ZombieDead", 2},  {13, "Player", 10},    {14, "Camera", 1},  {15, "SpawnPoint", 1},
    {16, "Arena", 1},       {17, "ResortSign", 2}, {18, "Wave", 2},    {19, "Hint", 2},
};

// Of the kinds above.
std::vector<int> numbers(std::span<const ObjectType> types) {
    std::vector<int> result;
    for (const ObjectType type : types) {
        if (indexOf(type) < std::size(typeCases)) {
            result.push_back(static_cast<int>(type));
        }
    }
    return result;
}

TEST(ObjectTypes, EveryTypeHasItsNameAndParent) {
    static_assert(std::size(typeCases) <= objectTypeCount);
    for (const TypeCase& row : typeCases) {
        const auto type = static_cast<ObjectType>(row.number);
        EXPECT_EQ(typeName(type), row.name);
        EXPECT_EQ(static_cast<int>(parentType(type)), row.parent) << row.name;
        EXPECT_EQ(typeFromName(row.name), type);
    }
}

TEST(ObjectTypes, NamesAreExact) {
    for (const char* name : {"zombie", "ZOMBIE", "Zombie ", "Zomb", ""}) {
        EXPECT_EQ(typeFromName(name), std::nullopt) << name;
    }
    EXPECT_EQ(typeFromName(std::string_view("Zombie\0", 7)), std::nullopt);
}

TEST(ObjectTypes, ChildrenComeInAscendingNumber) {
    EXPECT_THAT(numbers(childTypes(ObjectType::Object)), ElementsAre(2, 14, 15, 16));
    EXPECT_THAT(numbers(childTypes(ObjectType::Drawable)), ElementsAre(3, 12, 17, 18, 19));
    EXPECT_THAT(numbers(childTypes(ObjectType::Movable)), ElementsAre(4, 7, 10));
    EXPECT_THAT(numbers(childTypes(ObjectType::Weapon)), ElementsAre(6, 8));
    EXPECT_THAT(numbers(childTypes(ObjectType::Walker)), ElementsAre(11, 13));
    EXPECT_THAT(numbers(childTypes(ObjectType::Zombie)), IsEmpty());
}

TEST(ObjectTypes, NeitherInvalidNorObjectIsAnybodysChild) {
    EXPECT_THAT(numbers(childTypes(ObjectType::Invalid)), IsEmpty());
    for (std::size_t number = 0; number < objectTypeCount; ++number) {
        EXPECT_THAT(numbers(childTypes(static_cast<ObjectType>(number))), testing::Each(testing::Gt(1)));
    }
}

TEST(ObjectTypes, TheWalkIsBreadthFirst) {
    EXPECT_THAT(numbers(subtypeWalk(ObjectType::Drawable)),
                ElementsAre(2, 3, 12, 17, 18, 19, 4, 7, 10, 5, 11, 13, 6, 8, 9));
    EXPECT_THAT(numbers(subtypeWalk(ObjectType::Walker)), ElementsAre(10, 11, 13));
    EXPECT_THAT(numbers(subtypeWalk(ObjectType::Interactable)), ElementsAre(4, 5, 6, 8, 9));
    EXPECT_THAT(numbers(subtypeWalk(ObjectType::SpawnPoint)), ElementsAre(15));
    EXPECT_THAT(numbers(subtypeWalk(ObjectType::Object)),
                ElementsAre(1, 2, 14, 15, 16, 3, 12, 17, 18, 19, 4, 7, 10, 5, 11, 13, 6, 8, 9));
}

TEST(ObjectTypes, TheLineageGoesFromObjectDownToTheType) {
    EXPECT_THAT(numbers(lineage(ObjectType::Pineapple)), ElementsAre(1, 2, 3, 4, 5, 8, 9));
    EXPECT_THAT(numbers(lineage(ObjectType::Arena)), ElementsAre(1, 16));
    EXPECT_THAT(numbers(lineage(ObjectType::Object)), ElementsAre(1));
    EXPECT_THAT(numbers(lineage(ObjectType::Invalid)), IsEmpty());
}

} // namespace

} // namespace dunkman
