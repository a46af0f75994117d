#include "tests/tools/source_shape.h"

#include <algorithm>

namespace dunkman::inspect {

namespace {

std::string_view firstCharacters(JsonKind kind) {
    switch (kind) {
    case JsonKind::Bool:
        return "tf";
    case JsonKind::Null:
        return "n";
    case JsonKind::String:
        return "\"'";
    case JsonKind::Array:
        return "[";
    case JsonKind::Object:
        return "{";
    default:
        return "+-.0123456789NI";
    }
}

} // namespace

bool hasShapeOf(const SourcePlace& place, const JsonValue& value, std::string_view text) {
    if (place.offset >= text.size() ||
        firstCharacters(value.kind).find(text[place.offset]) == std::string_view::npos) {
        return false;
    }
    const JsonMembers& members = value.objectValue();
    if (place.members.size() != members.size()) {
        return false;
    }
    std::size_t number = 0;
    for (const JsonMember& member : members) {
        const SourceMember& there = place.members[number++];
        if (there.key != member.key() || !hasShapeOf(there.value, member.value, text)) {
            return false;
        }
    }
    const std::span<const JsonValue> elements = value.arrayValue();
    return std::equal(place.elements.begin(), place.elements.end(), elements.begin(), elements.end(),
                      [text](const SourcePlace& there, const JsonValue& element) {
                          return hasShapeOf(there, element, text);
                      });
}

} // namespace dunkman::inspect
