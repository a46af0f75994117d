#include "tools/inspect/property_check.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tools/inspect/level_files.h"
#include "tools/inspect/nearest.h"
#include "tools/reference/class_defaults.h"
#include "tools/reference/field_range.h"

namespace dunkman::inspect {

namespace {

constexpr std::string_view pairHelp = "a pair: two numbers in brackets, or one number that counts for both";

std::string_view describe(FieldKind kind) {
    switch (kind) {
    case FieldKind::Number:
        return "a number";
    case FieldKind::WholeNumber:
        return "a whole number, written without a point";
    case FieldKind::Flag:
        return "true or false, without quotes";
    case FieldKind::Text:
        return "a text in quotes";
    case FieldKind::Pair:
        return pairHelp;
    case FieldKind::Timer:
        return "a number of seconds";
    }
    return "";
}

bool isPair(const JsonValue& value) {
    return value.kind == JsonKind::Array && value.arrayValue().size() == 2 &&
           value.arrayValue()[0].isNumber() && value.arrayValue()[1].isNumber();
}

bool accepts(FieldKind kind, const JsonValue& value) {
    switch (kind) {
    case FieldKind::Number:
    case FieldKind::Timer:
        return value.isNumber();
    case FieldKind::WholeNumber:
        return value.kind == JsonKind::Integer;
    case FieldKind::Flag:
        return value.kind == JsonKind::Bool;
    case FieldKind::Text:
        return value.kind == JsonKind::String;
    case FieldKind::Pair:
        return value.isNumber() || isPair(value);
    }
    return false;
}

const Field* findFieldOfAny(const std::set<ObjectType>& types, std::string_view key) {
    for (const ObjectType type : types) {
        if (const Field* field = findField(type, key)) {
            return field;
        }
    }
    return nullptr;
}

std::vector<std::string_view> keysOfAll(const std::set<ObjectType>& types) {
    std::vector<std::string_view> keys;
    for (const ObjectType type : types) {
        for (const ObjectType ancestor : lineage(type)) {
            for (const Field& field : classOf(ancestor).fields) {
                keys.push_back(field.key);
            }
        }
    }
    return keys;
}

std::string nameOfAll(const std::set<ObjectType>& types) {
    std::string names;
    for (const ObjectType type : types) {
        names += (names.empty() ? "" : " or ") + std::string(typeName(type));
    }
    return names;
}

} // namespace

void PropertyCheck::check(const std::string& name, const Located& properties,
                          const std::set<ObjectType>& types, std::span<const std::string_view> besides) {
    if (types.empty()) {
        return;
    }
    for (const LocatedMember& member : properties.members()) {
        if (member.value.isMisread()) {
            continue;
        }
        if (const Field* field = findFieldOfAny(types, member.key)) {
            checkValue(name, *field, member.value);
        } else if (std::find(besides.begin(), besides.end(), member.key) == besides.end()) {
            std::vector<std::string_view> known = keysOfAll(types);
            known.insert(known.end(), besides.begin(), besides.end());
            faults.add(member.keySpot(), name + ": " + nameOfAll(types) + " has no property " +
                                             inQuotes(member.key) + '.' + suggestion(member.key, known));
        }
    }
}

void PropertyCheck::checkPair(const std::string& name, std::string_view key, const Located& value) {
    if (!accepts(FieldKind::Pair, value.value())) {
        reportKind(name, key, FieldKind::Pair, value);
    } else if (value->isNumber()) {
        checkNumber(name, key, anySensible, false, value);
    } else {
        for (const Located& number : value.elements()) {
            checkNumber(name, key, anySensible, false, number);
        }
    }
}

void PropertyCheck::checkValue(const std::string& name, const Field& field, const Located& value) {
    if (!accepts(field.kind, value.value())) {
        reportKind(name, field.key, field.kind, value);
    } else if (value->isNumber()) {
        checkNumber(name, field.key, field.range, field.kind == FieldKind::WholeNumber, value);
    } else if (field.kind == FieldKind::Pair) {
        for (const Located& number : value.elements()) {
            checkNumber(name, field.key, field.range, false, number);
        }
    } else if (field.key == "imageKey") {
        checkImage(name, value);
    }
}

void PropertyCheck::checkNumber(const std::string& name, std::string_view key, const FieldRange& range,
                                bool isWhole, const Located& number) {
    if (number.isMisread()) {
        return;
    }
    const double size =
        number->kind == JsonKind::Integer ? static_cast<double>(number->intValue()) : number->floatValue();
    const bool isHuge = size < -largestSensible || size > largestSensible;
    const std::string start = name + ": " + inQuotes(key) + " is ";
    if (std::isinf(size)) {
        faults.add(number.spot(), start + "infinite, with which nothing can be reckoned.");
    } else if (std::isnan(size)) {
        faults.add(number.spot(), start + "not a number, NaN, with which nothing can be reckoned.");
    } else if (isWhole && (size < std::numeric_limits<std::int32_t>::min() ||
                           size > std::numeric_limits<std::int32_t>::max())) {
        faults.add(number.spot(), start + "beyond 32 bits and wraps round: -2147483648 to 2147483647 fit.");
    } else if (isHuge || !range.contains(size)) {
        const bool isBounded = range.most < largestSensible || !isHuge;
        const std::string sensible = isBounded ? reference::rangeText(range) : "-1000000 to 1000000";
        faults.add(number.spot(),
                   start + reference::plainText(number.value()) + "; sensible is " + sensible + '.');
    }
}

void PropertyCheck::checkImage(const std::string& name, const Located& key) {
    const std::string_view text = key->stringValue();
    if (images.isSound() && !images.top()->contains(text)) {
        faults.add(key.spot(), name + ": there is no image " + inQuotes(text) +
                                   " in images_compressed.json5." + suggestion(text, keysOf(images.top())));
    }
}

void PropertyCheck::reportKind(const std::string& name, std::string_view key, FieldKind wanted,
                               const Located& value) {
    faults.add(value.spot(), name + ": " + inQuotes(key) + " wants " + std::string(describe(wanted)) +
                                 "; anything else is passed over.");
}

} // namespace dunkman::inspect
