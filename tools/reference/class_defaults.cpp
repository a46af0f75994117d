#include "tools/reference/class_defaults.h"

#include <charconv>
#include <utility>

#include "render/image_table_writer.h"
#include "world/object.h"
#include "world/object_class.h"
#include "world/registry.h"

namespace dunkman::reference {

namespace {

// Constructors look pictures up; for the time of one these are all there, `aspect` times as wide as high.
JsonValue writtenWithPictures(ObjectType type, std::uint32_t aspect) {
    auto before = std::exchange(writable::pictures.imageTable, {});
    for (const ObjectType ancestor : lineage(type)) {
        for (const std::string_view key : classOf(ancestor).images) {
            Texture2D& picture = writable::pictures.imageTable[std::string(key)];
            picture.width = aspect;
            picture.height = 1;
        }
    }
    JsonValue written = createObject(type)->writeProperties();
    writable::pictures.imageTable = std::move(before);
    return written;
}

std::string shortest(double number) {
    char digits[64];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

} // namespace

JsonValue defaultsOf(ObjectType type) { return writtenWithPictures(type, 1); }

bool widthFollowsPicture(ObjectType type) {
    return plainText(writtenWithPictures(type, 1).get("size")) !=
           plainText(writtenWithPictures(type, 2).get("size"));
}

std::string plainText(const JsonValue& value) {
    switch (value.kind) {
    case JsonKind::Bool:
        return value.boolValue() ? "true" : "false";
    case JsonKind::Integer:
        return std::to_string(value.intValue());
    case JsonKind::Float:
        return shortest(value.floatValue());
    case JsonKind::String:
        return '"' + std::string(value.stringValue()) + '"';
    case JsonKind::Array: {
        std::string text = "[";
        for (const JsonValue& element : value.arrayValue()) {
            text += (text.size() > 1 ? ", " : "") + plainText(element);
        }
        return text + "]";
    }
    default:
        return "null";
    }
}

} // namespace dunkman::reference
