#include "json5/writer.h"

#include <array>
#include <charconv>

namespace dunkman {

void Json5Writer::write(const JsonValue& value, int depth) {
    switch (value.kind) {
    case JsonKind::Bool:
        out += value.boolValue() ? "true" : "false";
        break;
    case JsonKind::Integer: {
        std::array<char, 24> digits;
        const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value.intValue());
        out.append(digits.data(), result.ptr);
        break;
    }
    case JsonKind::Float:
        appendFloat(out, value.floatValue());
        break;
    case JsonKind::String:
        out += '"';
        out += value.stringValue();
        out += '"';
        break;
    case JsonKind::Array:
        writeArray(value.arrayValue(), depth);
        break;
    case JsonKind::Object:
        writeObject(value.objectValue(), depth);
        break;
    case JsonKind::Null:
        out += "null";
        break;
    }
}

void Json5Writer::writeArray(std::span<const JsonValue> elements, int depth) {
    const bool onLines =
        !indentUnit.empty() && !elements.empty() && elements.front().kind == JsonKind::Object;
    out += '[';
    if (onLines) {
        out += '\n';
    }
    for (const JsonValue& element : elements) {
        if (onLines) {
            indent(depth + 1);
        }
        write(element, depth + 1);
        if (&element != &elements.back()) {
            out += ',';
        }
        if (onLines) {
            out += '\n';
        }
    }
    if (onLines) {
        indent(depth);
    }
    out += ']';
}

void Json5Writer::writeObject(const JsonMembers& members, int depth) {
    const bool onLines = !indentUnit.empty();
    out += '{';
    if (onLines && !members.empty()) {
        out += '\n';
    }
    std::size_t left = members.size();
    for (const JsonMember& member : members) {
        if (onLines) {
            indent(depth + 1);
        }
        out += '"';
        out += member.key();
        out += "\": ";
        write(member.value, depth + 1);
        if (--left != 0) {
            out += ", "; // on lines too: the space stays before the line feed
        }
        if (onLines) {
            out += '\n';
        }
    }
    if (onLines) {
        indent(depth); // an empty object inside another one has it between its braces
    }
    out += '}';
}

void Json5Writer::indent(int depth) {
    for (int level = 0; level < depth; ++level) {
        out += indentUnit;
    }
}

void writeJson5(const JsonValue& value, std::string& text, std::string_view indentUnit, int depth) {
    Json5Writer(text, indentUnit).write(value, depth);
}

} // namespace dunkman
