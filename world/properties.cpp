#include "world/properties.h"

namespace dunkman {

void readProperty(const JsonValue& value, bool& field) {
    if (value.kind == JsonKind::Bool) {
        field = value.boolValue();
    }
}

void readProperty(const JsonValue& value, double& field) {
    if (value.kind == JsonKind::Integer) {
        field = static_cast<double>(value.intValue());
    } else if (value.kind == JsonKind::Float) {
        field = value.floatValue();
    }
}

void readProperty(const JsonValue& value, std::int32_t& field) {
    if (value.kind == JsonKind::Integer) {
        field = static_cast<std::int32_t>(value.intValue());
    }
}

void readProperty(const JsonValue& value, std::string& field) {
    if (value.kind == JsonKind::String) {
        field = value.stringValue();
    }
}

void readProperty(const JsonValue& value, Vec2& field) { readPair(value, field.x, field.y); }

void readProperty(const JsonValue& value, Timer& field) {
    if (value.isNumber()) {
        readProperty(value, field.duration);
        field.running = false;
        field.elapsed = 0.0;
    }
}

JsonValue writtenProperty(bool field) { return JsonValue::makeBool(field); }

JsonValue writtenProperty(double field) { return JsonValue::makeFloat(field); }

JsonValue writtenProperty(std::int32_t field) { return JsonValue::makeInteger(field); }

JsonValue writtenProperty(const std::string& field) { return JsonValue::makeString(field); }

JsonValue writtenProperty(Vec2 field) { return JsonValue::makePair(field.x, field.y); }

JsonValue writtenProperty(const Timer& field) { return writtenProperty(field.duration); }

} // namespace dunkman
