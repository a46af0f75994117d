#include "tests/scenarios/random_scene.h"

#include <array>
#include <cstdio>
#include <vector>

#include "world/arena.h"
#include "world/object_class.h"

namespace dunkman {

namespace {

constexpr std::uint32_t prefabCount = 5;

// What a random scene may set on an object, whatever its class.
struct Property {
    std::string_view key;
    std::string_view kind;
};

// The kind of values that make a game of it; a few fields need more than their kind tells.
std::string_view kindOf(const Field& field) {
    if (field.key == "imageKey") {
        return "picture";
    }
    if (field.key == "health") {
        return "health";
    }
    if (field.key == "enemyVariant") {
        return "variant";
    }
    switch (field.kind) {
    case FieldKind::Flag:
        return "flag";
    case FieldKind::WholeNumber:
        return "whole";
    case FieldKind::Pair:
        return "pair";
    default:
        return "number";
    }
}

std::vector<Property> makeProperties() {
    std::vector<Property> made = {{"position", "place"}};
    for (std::size_t number = 1; number < objectTypeCount; ++number) {
        for (const Field& field : classOf(static_cast<ObjectType>(number)).fields) {
            made.push_back({field.key, kindOf(field)});
            if (field.key == "size") {
                made.push_back({field.key, "number"});
            }
        }
    }
    return made;
}

const std::vector<Property> properties = makeProperties();

// 1e400 reads as an infinity; from two of those comes NaN.
constexpr std::array<std::string_view, 16> nastyNumbers = {
    "0",      "-0.0", "-1",         "-1e-3",       "1e308",      "-1e308", "1e-320", "1e400",
    "-1e400", "-0.5", "2147483647", "-2147483648", "4294967296", "1e17",   "0.0",    "9223372036854775807"};

constexpr std::array<std::string_view, 10> oddValues = {
    "null",      "true",       "\"text\"",   "[]", "[1]",
    "[1, 2, 3]", "[\"a\", 2]", "[1, \"a\"]", "{}", "{\"position\": 3}"};

constexpr std::array<std::string_view, 8> pictures = {"player",    "playerUnarmed", "zombie",   "flamingo",
                                                      "pineapple", "sunset",        "palmTree", "btnZ"};

} // namespace

std::string RandomScene::number() {
    if (chance(0.06)) {
        // Once in a long while a literal that the reader itself refuses.
        return chance(0.002) ? std::string("1e9999") : std::string(oneOf(nastyNumbers));
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", (static_cast<double>(below(1200)) - 300.0) / 100.0);
    return text;
}

std::string RandomScene::wholeNumber() {
    if (chance(0.06)) {
        return std::string(oneOf(nastyNumbers));
    }
    return std::to_string(static_cast<std::int32_t>(below(9)) - 2);
}

std::string RandomScene::pair() {
    if (chance(0.2)) {
        return number();
    }
    std::string text = "[";
    text += number();
    text += ", ";
    text += number();
    return text + "]";
}

std::string RandomScene::anything() { return chance(0.5) ? std::string(oneOf(oddValues)) : pair(); }

std::string RandomScene::picture() {
    return chance(0.001) ? "\"missing\"" : '"' + std::string(oneOf(pictures)) + '"';
}

std::string RandomScene::valueFor(std::string_view kind) {
    if (chance(0.04)) {
        return anything();
    }
    if (kind == "flag") {
        return chance(0.5) ? "true" : "false";
    }
    if (kind == "picture") {
        return picture();
    }
    if (kind == "whole") {
        return wholeNumber();
    }
    if (kind == "health") {
        return std::to_string(static_cast<std::int32_t>(below(12)) - 1);
    }
    if (kind == "variant") {
        return std::to_string(below(chance(0.05) ? 7 : 5));
    }
    if (kind == "place") {
        const std::string x = std::to_string(below(25));
        return "[" + x + ", " + number() + "]";
    }
    return kind == "pair" ? pair() : number();
}

void RandomScene::appendProperties(std::string& out, ObjectType type, std::uint32_t most) {
    for (std::uint32_t left = below(most + 1); left > 0; --left) {
        const Property& property = properties[below(static_cast<std::uint32_t>(properties.size()))];
        // Every heart of the hero is drawn, so a huge health only takes time; and he is no use when dead.
        const bool spared = property.kind == "health" && type == ObjectType::Player;
        out += ", \"" + std::string(property.key) + "\": ";
        out += spared ? std::to_string(below(9)) : valueFor(property.kind);
    }
    if (chance(0.05)) {
        out += ", \"noSuchKey\": " + anything();
    }
}

std::string RandomScene::recipes() {
    recipeTypes.clear();
    std::string text = "{";
    for (std::uint32_t number = 0; number < 40; ++number) {
        const auto type = static_cast<ObjectType>(number % (objectTypeCount - 1) + 1);
        recipeTypes.push_back(type);
        text += "\"r" + std::to_string(number) + "\": {\"_type\": \"" + std::string(typeName(type)) + '"';
        appendProperties(text, type, 6);
        text += "},\n";
    }
    for (const std::string_view name : zombieRecipes) {
        if (!chance(0.01)) {
            text +=
                '"' + std::string(name) + "\": {\"_type\": \"" + (chance(0.005) ? "Walker" : "Zombie") + '"';
            appendProperties(text, ObjectType::Zombie, 4);
            text += "},\n";
        }
    }
    // The certain ones that every scene begins with.
    return text +
           R"("hero": {"_type": "Player"}, "camera": {"_type": "Camera"}, "flamingo": {"_type": "Flamingo"},
                     "pineapple": {"_type": "Pineapple"}, "arena": {"_type": "Arena"}, "point": {"_type": "SpawnPoint"}})";
}

void RandomScene::appendPlace(std::string& out) {
    out += ", \"position\": [" + std::to_string(static_cast<std::int32_t>(below(24)) - 8);
    out += "." + std::to_string(below(10));
    out += chance(0.5) ? ", 0." : ", -0.";
    out += std::to_string(below(10)) + "]";
}

std::string RandomScene::entry(std::uint32_t prefabsAllowed) {
    std::string text = "{\"tag\": \"t" + std::to_string(below(3)) + '"';
    if (prefabsAllowed > 0 && chance(0.15)) {
        text += ", \"prefab\": \"p" + std::to_string(below(prefabsAllowed));
        text += "\", \"offset\": " + pair();
        if (chance(0.5)) {
            text += ", \"overrides\": {\"t" + std::to_string(below(3)) + "\": {\"_type\": \"Object\"";
            appendProperties(text, ObjectType::Player, 3);
            text += "}}";
        }
        return text + "}";
    }
    if (chance(0.0005)) {
        return text + ", \"recipe\": \"unknown\"}";
    }
    const std::uint32_t recipe = below(static_cast<std::uint32_t>(recipeTypes.size()));
    text += ", \"recipe\": \"r" + std::to_string(recipe) + '"';
    appendPlace(text);
    appendProperties(text, recipeTypes[recipe], 4);
    return text + "}";
}

std::string RandomScene::prefabs() {
    std::string text = "{";
    for (std::uint32_t number = 0; number < prefabCount; ++number) {
        text += "\"p" + std::to_string(number) + "\": [";
        for (std::uint32_t left = below(5); left > 0; --left) {
            text += entry(number) + ",\n"; // of prefabs only earlier ones, so none contains itself
        }
        text += "],\n";
    }
    return text + "}";
}

std::string RandomScene::scene() {
    std::string text = "[";
    if (!chance(0.02)) {
        text += "{\"recipe\": \"hero\", \"health\": " + std::to_string(below(5));
        appendProperties(text, ObjectType::Player, 3);
        text += "},\n";
    }
    if (!chance(0.05)) {
        text += "{\"recipe\": \"camera\"";
        appendProperties(text, ObjectType::Camera, 1);
        text += "},\n";
    }
    text += "{\"recipe\": \"flamingo\", \"position\": [0.5, 0.8], \"collisionRadius\": 3, \"damage\": " +
            wholeNumber() + "},\n";
    text += "{\"recipe\": \"pineapple\", \"position\": [-0.5, 0.8], \"damage\": " + wholeNumber() + "},\n";
    for (std::uint32_t left = below(4); left > 0; --left) {
        text += "{\"recipe\": \"point\", \"position\": [" + std::to_string(below(9)) + ", 1]},\n";
    }
    for (std::uint32_t left = below(3); left > 0; --left) {
        text += "{\"recipe\": \"arena\", \"position\": [" + std::to_string(below(4)) + ", 0]";
        appendProperties(text, ObjectType::Arena, 12);
        text += "},\n";
    }
    for (std::uint32_t left = below(30); left > 0; --left) {
        text += entry(prefabCount) + ",\n";
    }
    return text + "]";
}

} // namespace dunkman
