#include "world/properties.h"

namespace dunkman {

void readBoolProperty(const JsonValue& value, std::string_view key, bool& field) {
    if (const JsonValue* found = value.find(key); found != nullptr && found->kind == JsonKind::Bool) {
        field = found->boolValue;
    }
}

void readNumberProperty(const JsonValue& value, std::string_view key, double& field) {
    const JsonValue& found = value.get(key);
    if (found.kind == JsonKind::Integer) {
        field = static_cast<double>(found.intValue);
    } else if (found.kind == JsonKind::Float) {
        field = found.floatValue;
    }
}

void readIntegerProperty(const JsonValue& value, std::string_view key, std::int32_t& field) {
    if (const JsonValue* found = value.find(key); found != nullptr && found->kind == JsonKind::Integer) {
        field = static_cast<std::int32_t>(found->intValue);
    }
}

void readStringProperty(const JsonValue& value, std::string_view key, std::string& field) {
    if (const JsonValue* found = value.find(key); found != nullptr && found->kind == JsonKind::String) {
        field = found->stringValue;
    }
}

void readPairProperty(const JsonValue& value, std::string_view key, Vec2& field) {
    readPair(value.get(key), field.x, field.y);
}

void readTimerProperty(const JsonValue& value, std::string_view key, Timer& field) {
    const JsonValue& found = value.get(key);
    if (found.isNumber()) {
        readNumberProperty(value, key, field.duration);
        field.running = false;
        field.elapsed = 0.0;
    }
}

void writeProperty(JsonValue& value, std::string_view key, bool field) {
    value.member(key) = JsonValue::makeBool(field);
}

void writeProperty(JsonValue& value, std::string_view key, double field) {
    value.member(key) = JsonValue::makeFloat(field);
}

void writeProperty(JsonValue& value, std::string_view key, std::int32_t field) {
    value.member(key) = JsonValue::makeInteger(field);
}

void writeProperty(JsonValue& value, std::string_view key, std::string_view field) {
    value.member(key) = JsonValue::makeString(std::string(field));
}

void writeProperty(JsonValue& value, std::string_view key, Vec2 field) {
    value.member(key) = JsonValue::makePair(field.x, field.y);
}

void writeProperty(JsonValue& value, std::string_view key, const Timer& field) {
    writeProperty(value, key, field.duration);
}

} // namespace dunkman
