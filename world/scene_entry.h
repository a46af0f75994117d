#pragma once

#include <array>
#include <string_view>

namespace dunkman {

// A member of a scene entry that is no property of the object which the entry makes.
struct EntryMember {
    std::string_view key;
    bool inRecipeEntry; // may stand beside "recipe"
    bool inPrefabEntry; // may stand beside "prefab"
    std::string_view kind;
    std::string_view meaning;
};

// Scenes and prefabs are arrays of entries. An entry with a "recipe" makes one object and gives it the entry's
// properties; one with a "prefab" makes all objects of the prefab.
namespace scene_entry {

inline constexpr EntryMember recipe{"recipe", true, false, "text", "makes an object of this recipe"};
inline constexpr EntryMember prefab{"prefab", false, true, "text", "makes all that this prefab lists"};
inline constexpr EntryMember tag{"tag", true, true, "text",
                                 "name by which the overrides of a prefab reach the object"};
inline constexpr EntryMember offset{"offset", false, true, "pair",
                                    "added to the position of all objects of the prefab, world units"};
inline constexpr EntryMember overrides{
    "overrides", false, true, "properties by tag",
    "properties for the objects of the prefab with that tag, set after the offset"};

inline constexpr std::array members = {recipe, prefab, tag, offset, overrides};

} // namespace scene_entry

} // namespace dunkman
