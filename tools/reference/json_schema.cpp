#include "tools/reference/json_schema.h"

#include <cstdint>

#include "tools/reference/class_defaults.h"
#include "world/object_class.h"
#include "world/scene_entry.h"

namespace dunkman::reference {

namespace {

// allowTrailingCommas is for editors that read JSON Schema beyond its standard.
constexpr std::string_view head = R"({
"$schema": "http://json-schema.org/draft-07/schema#",
"$comment": "Written by dunkman-inspect schema; change the lists in the sources, not this file.",
"allowTrailingCommas": true,
)";

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char letter : text) {
        out += letter == '"' || letter == '\\' ? std::string{'\\', letter} : std::string{letter};
    }
    return out + '"';
}

std::string reference(std::string_view definition) {
    return "{\"$ref\": \"objects.schema.json#/definitions/" + std::string(definition) + "\"}";
}

// Bounds that are there for good sense alone go without saying.
std::string rulesOf(const FieldRange& range) {
    const auto bound = [](double number) { return std::to_string(static_cast<std::int64_t>(number)); };
    std::string rules;
    if (range.least > -largestSensible) {
        rules += (range.isAboveLeast ? ", \"exclusiveMinimum\": " : ", \"minimum\": ") + bound(range.least);
    }
    if (range.most < largestSensible) {
        rules += ", \"maximum\": " + bound(range.most);
    }
    return rules;
}

std::string rulesOf(FieldKind kind, const FieldRange& range) {
    switch (kind) {
    case FieldKind::Number:
    case FieldKind::Timer:
        return R"("type": "number")" + rulesOf(range);
    case FieldKind::WholeNumber:
        return R"("type": "integer")" + rulesOf(range);
    case FieldKind::Flag:
        return R"("type": "boolean")";
    case FieldKind::Text:
        return R"("type": "string")";
    case FieldKind::Pair:
        return R"("type": ["number", "array"])" + rulesOf(range) + R"(, "items": {"type": "number")" +
               rulesOf(range) + R"(}, "minItems": 2, "maxItems": 2)";
    }
    return "";
}

std::string propertyOf(const Field& field) {
    return quoted(field.key) + ": {" + rulesOf(field.kind, field.range) +
           ", \"description\": " + quoted(field.meaning);
}

std::string descriptionOf(ObjectType type) {
    std::string description(classOf(type).meaning);
    if (!classOf(type).rule.empty()) {
        description += ' ' + std::string(classOf(type).rule);
    }
    return description;
}

// The properties of a class, its ancestors' included, with the class's own defaults.
std::string classSchema(ObjectType type) {
    const JsonValue defaults = defaultsOf(type);
    std::string out = quoted(typeName(type)) + ": {\n\"description\": " + quoted(descriptionOf(type)) +
                      ",\n\"properties\": {\n\"_type\": true";
    for (const ObjectType ancestor : lineage(type)) {
        for (const Field& field : classOf(ancestor).fields) {
            out += ",\n" + propertyOf(field);
            if (field.key != "size" || !widthFollowsPicture(type)) {
                out += ", \"default\": " + plainText(defaults.get(field.key));
            }
            out += '}';
        }
    }
    return out + "\n},\n\"additionalProperties\": false}";
}

// A recipe is one of the class that it names.
std::string recipeSchema() {
    std::string names;
    std::string choices;
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        const std::string name = quoted(typeName(type));
        names += (names.empty() ? "" : ", ") + name;
        choices += std::string(choices.empty() ? "" : ",") +
                   "\n{\"if\": {\"required\": [\"_type\"], \"properties\": {\"_type\": {\"const\": " + name +
                   "}}}, \"then\": {\"$ref\": \"#/definitions/" + std::string(typeName(type)) + "\"}}";
    }
    return "\"recipe\": {\n\"type\": \"object\", \"required\": [\"_type\"],\n\"properties\": {\"_type\": "
           "{\"enum\": [" +
           names + "], \"description\": \"the class that the recipe makes\"}},\n\"allOf\": [" + choices +
           "\n]}";
}

// The keys of all classes: what an entry's recipe makes is not known here.
std::string anyProperties() {
    std::string out;
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        for (const Field& field : classOf(type).fields) {
            out += (out.empty() ? "" : ",\n") + propertyOf(field) + '}';
        }
    }
    return out;
}

std::string entryMember(const EntryMember& member) {
    std::string rules = "\"type\": \"string\"";
    if (member.key == scene_entry::offset.key) {
        rules = rulesOf(FieldKind::Pair, anySensible);
    } else if (member.key == scene_entry::overrides.key) {
        rules = "\"type\": \"object\", \"additionalProperties\": {\"$ref\": \"#/definitions/properties\"}";
    }
    return quoted(member.key) + ": {" + rules + ", \"description\": " + quoted(member.meaning) + '}';
}

std::string entrySchemas() {
    std::string ofRecipe;
    std::string ofPrefab;
    for (const EntryMember& member : scene_entry::members) {
        if (member.inRecipeEntry) {
            ofRecipe += entryMember(member) + ",\n";
        }
        if (member.inPrefabEntry) {
            ofPrefab += (ofPrefab.empty() ? "" : ",\n") + entryMember(member);
        }
    }
    return "\"properties\": {\n\"type\": \"object\",\n\"properties\": {\n" + anyProperties() +
           "\n},\n\"additionalProperties\": false},\n"
           "\"recipeEntry\": {\n\"properties\": {\n" +
           ofRecipe + anyProperties() +
           "\n},\n\"additionalProperties\": false},\n"
           "\"prefabEntry\": {\n\"required\": [\"prefab\"],\n\"properties\": {\n" +
           ofPrefab +
           "\n},\n\"additionalProperties\": false},\n"
           "\"entry\": {\n\"type\": \"object\", \"if\": {\"required\": [\"recipe\"]},\n"
           "\"then\": {\"$ref\": \"#/definitions/recipeEntry\"},\n"
           "\"else\": {\"$ref\": \"#/definitions/prefabEntry\"}},\n"
           "\"entries\": {\"type\": \"array\", \"items\": {\"$ref\": \"#/definitions/entry\"}}";
}

std::string objectsSchema() {
    std::string out = std::string(head) + "\"title\": \"Objects of a level\",\n\"definitions\": {\n";
    for (const ObjectType type : subtypeWalk(ObjectType::Object)) {
        out += classSchema(type) + ",\n";
    }
    return out + recipeSchema() + ",\n" + entrySchemas() + "\n}\n}\n";
}

std::string namedValues(std::string_view title, std::string_view definition) {
    return std::string(head) + "\"title\": " + quoted(title) +
           ",\n\"type\": \"object\",\n\"additionalProperties\": " + reference(definition) + "\n}\n";
}

} // namespace

std::string jsonSchema(std::string_view name) {
    if (name == "objects") {
        return objectsSchema();
    }
    if (name == "recipes") {
        return namedValues("Recipes by name", "recipe");
    }
    if (name == "prefabs") {
        return namedValues("Prefabs by name", "entries");
    }
    if (name == "scene") {
        return std::string(head) + "\"title\": \"The level\",\n\"allOf\": [" + reference("entries") +
               "]\n}\n";
    }
    return {};
}

} // namespace dunkman::reference
