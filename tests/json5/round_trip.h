#pragma once

#include "json5/value.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace dunkman::test {

// Strings go out byte for byte, so only these come back as they were.
inline bool readsBack(std::string_view bytes) {
    return bytes.find_first_of("\"\\\r\n") == std::string_view::npos;
}

// Whether the writer's text of a value reads back: no awkward bytes, no Float that prints without a point of its
// own in front of an exponent, no infinity, no nan.
inline bool readsBack(const JsonValue& value) {
    switch (value.kind) {
    case JsonKind::Float: {
        const double size = std::abs(value.floatValue());
        return size == 0.0 || (size >= 0.0001 && size < 999999.0);
    }
    case JsonKind::String:
        return readsBack(value.stringValue());
    case JsonKind::Array:
        return std::all_of(value.arrayValue().begin(), value.arrayValue().end(),
                           [](const JsonValue& element) { return readsBack(element); });
    case JsonKind::Object:
        for (const JsonMember& member : value.objectValue()) {
            if (!readsBack(member.key()) || !readsBack(member.value)) {
                return false;
            }
        }
        return true;
    default:
        return true;
    }
}

} // namespace dunkman::test
