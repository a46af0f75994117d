#include "world/object.h"

#include <string>

#include "world/properties.h"

namespace dunkman {

Rect Object::getBounds() const { return {position.x, position.y, position.x + size.x, position.y + size.y}; }

void Object::readProperties(const JsonValue& value) {
    readPairProperty(value, "position", position);
    readPairProperty(value, "size", size);
}

JsonValue Object::writeProperties() const {
    JsonValue value = JsonValue::makeObject();
    writeProperty(value, "_type", typeName(getType()));
    writeProperty(value, "position", position);
    writeProperty(value, "size", size);
    return value;
}

} // namespace dunkman
