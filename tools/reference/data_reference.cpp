#include "tools/reference/data_reference.h"

#include <string_view>

#include "tools/reference/class_defaults.h"
#include "tools/reference/field_range.h"
#include "world/object_class.h"
#include "world/scene_entry.h"

namespace dunkman::reference {

namespace {

constexpr std::string_view introduction = R"(# The data files of a level

Written by `dunkman-inspect reference` from the lists in the game's own sources; change those, not this file.

| file | holds |
|---|---|
| `recipes.json5` | an object: the name of each recipe, and what it makes: a class in `_type` and its properties |
| `prefabs.json5` | an object: the name of each prefab, and an array of entries |
| `scene.json5` | an array of entries: the level |

Every property is optional. A recipe starts from the defaults of its class, an entry from its recipe, an override from what
the prefab made. A key that the class does not have, or a value of another kind, is passed over in silence by the game;
[`dunkman-inspect check --data data`](level.md#what-the-check-finds) names it, and numbers out of their range. Editors complete and check the same while you type: see
[what editors know](new-object.md#what-editors-know).

## Entries of scenes and prefabs

An entry with a `recipe` makes one object; all its other members but `tag` are properties of that object. An entry with a
`prefab`, and no `recipe`, makes all that the prefab lists.

)";

constexpr std::string_view kinds = R"(
## Kinds of value

| kind | written as | note |
|---|---|---|
| number | `2`, `0.5` | |
| whole number | `2` | without a point: `2.0` is passed over |
| flag | `true`, `false` | |
| text | `"zombie"` | |
| pair | `[1, 0.5]` or `1`, which counts for both | exactly two numbers |
| timer | `2`, `0.5` | seconds; being read stops the timer and winds it back |

A range behind the kind is what makes sense, for both numbers of a pair; no number makes sense beyond a million. Flags and
texts have none. Places and lengths are in world units, 18 of which are as wide as the view; x grows to the right, y upwards.

## Classes

Each class has the properties of the one that it stands below, and its own.

)";

std::string_view nameOf(FieldKind kind) {
    switch (kind) {
    case FieldKind::Number:
        return "number";
    case FieldKind::WholeNumber:
        return "whole number";
    case FieldKind::Flag:
        return "flag";
    case FieldKind::Text:
        return "text";
    case FieldKind::Pair:
        return "pair";
    case FieldKind::Timer:
        return "timer";
    }
    return "";
}

std::string code(std::string_view text) { return '`' + std::string(text) + '`'; }

std::string nameOf(ObjectType type) { return std::string(typeName(type)); }

// Classes are headings; how a viewer makes a link's target of one is to write it small.
std::string linkTo(ObjectType type) {
    std::string target = nameOf(type);
    for (char& letter : target) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return '[' + nameOf(type) + "](#" + target + ')';
}

std::string defaultOf(ObjectType type, std::string_view key, const JsonValue& value) {
    if (key == "size" && widthFollowsPicture(type)) {
        return code(plainText(value.arrayValue()[1])) + ", as wide as its picture asks for";
    }
    return code(plainText(value));
}

void appendEntryMembers(std::string& out) {
    out += "| member | kind | meaning |\n|---|---|---|\n";
    for (const EntryMember& member : scene_entry::members) {
        out += "| " + code(member.key) + " | " + std::string(member.kind) + " | " +
               std::string(member.meaning) + " |\n";
    }
}

void appendTree(std::string& out, ObjectType type, std::size_t depth) {
    out += std::string(2 * depth, ' ') + "- " + linkTo(type) + '\n';
    for (const ObjectType child : childTypes(type)) {
        appendTree(out, child, depth + 1);
    }
}

void appendOwnFields(std::string& out, ObjectType type, const JsonValue& defaults) {
    if (classOf(type).fields.empty()) {
        return;
    }
    out += "\n| key | kind | default | meaning |\n|---|---|---|---|\n";
    for (const Field& field : classOf(type).fields) {
        const std::string range = rangeText(field.range);
        out += "| " + code(field.key) + " | " + std::string(nameOf(field.kind)) +
               (range.empty() ? "" : ", ") + range + " | " +
               defaultOf(type, field.key, defaults.get(field.key)) + " | " + std::string(field.meaning) +
               " |\n";
    }
}

// What the constructor changes of the ancestors' defaults.
void appendOtherDefaults(std::string& out, ObjectType type, const JsonValue& defaults) {
    const ObjectType parent = parentType(type);
    if (parent == ObjectType::Invalid) {
        return;
    }
    const JsonValue before = defaultsOf(parent);
    std::string list;
    for (const JsonMember& member : before.objectValue()) {
        const std::string own = defaultOf(type, member.key(), defaults.get(member.key()));
        if (member.key() != "_type" && own != defaultOf(parent, member.key(), member.value)) {
            list += (list.empty() ? "" : "; ") + code(member.key()) + ' ' + own;
        }
    }
    if (!list.empty()) {
        out += "\nOther defaults: " + list + ".\n";
    }
}

void appendImages(std::string& out, ObjectType type) {
    std::string list;
    for (const std::string_view key : classOf(type).images) {
        list += (list.empty() ? "" : ", ") + code(key);
    }
    if (!list.empty()) {
        out += "\nBrings pictures along: " + list + ".\n";
    }
}

void appendClass(std::string& out, ObjectType type) {
    const JsonValue defaults = defaultsOf(type);
    const ObjectClass& described = classOf(type);
    out += "\n### " + nameOf(type) + "\n\n" + std::string(described.meaning);
    if (parentType(type) != ObjectType::Invalid) {
        out += " Below " + linkTo(parentType(type)) + '.';
    }
    out += '\n';
    appendOwnFields(out, type, defaults);
    if (!described.rule.empty()) {
        out += '\n' + std::string(described.rule) + '\n';
    }
    appendOtherDefaults(out, type, defaults);
    appendImages(out, type);
}

} // namespace

std::string dataReference() {
    std::string out(introduction);
    appendEntryMembers(out);
    out += kinds;
    appendTree(out, ObjectType::Object, 0);
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        appendClass(out, static_cast<ObjectType>(number));
    }
    return out;
}

} // namespace dunkman::reference
