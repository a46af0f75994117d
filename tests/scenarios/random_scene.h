#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "world/object_type.h"

namespace dunkman {

// Makes up data files from a seed, the same ones everywhere: objects of all types with properties that a
// level could have, and now and then with ones that no level should (zero, negative, huge and infinite sizes
// and times, wrong kinds, missing pictures, unknown keys).
class RandomScene {
public:
    explicit RandomScene(std::uint64_t seed) : engine(seed) {}

    std::string recipes(); // fixes what scene and prefabs may refer to
    std::string prefabs();
    std::string scene();

    // A whole number from 0 to below `count`, and whether something of the given probability happens.
    std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(engine() % count); }
    bool chance(double probability) { return static_cast<double>(below(1'000'000)) < probability * 1e6; }

private:
    // No expression draws twice: compilers differ in which side of a + they see to first.
    template <class List> auto oneOf(const List& list) {
        return list[below(static_cast<std::uint32_t>(std::size(list)))];
    }

    std::string number();
    std::string wholeNumber();
    std::string pair();
    std::string anything();
    std::string picture();
    std::string valueFor(std::string_view kind);
    void appendProperties(std::string& out, ObjectType type, std::uint32_t most);
    void appendPlace(std::string& out);
    std::string entry(std::uint32_t prefabsAllowed);

    std::mt19937_64 engine;
    std::vector<ObjectType> recipeTypes;
};

} // namespace dunkman
