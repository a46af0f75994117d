#include "world/object.h"

#include <array>
#include <string>

#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

namespace {

constexpr std::array fields = {
    field<&Object::position>("position", "where it is, world units; of a picture its pivot"),
    field<&Object::size>("size", "width and height, world units", positive),
};

} // namespace

template <> const ObjectClass& objectClass<Object>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Object>(),
        .meaning = "Anything with a place. Shows and does nothing.",
        .fields = fields,
    };
    return record;
}

Rect Object::getBounds() const { return {position.x, position.y, position.x + size.x, position.y + size.y}; }

void Object::readProperties(const JsonValue& value) {
    for (const ObjectType ancestor : lineage(getType())) {
        for (const Field& field : classOf(ancestor).fields) {
            field.read(*this, value.get(field.key));
        }
    }
}

JsonValue Object::writeProperties() const {
    JsonValue value = JsonValue::makeObject();
    value.member("_type") = JsonValue::makeString(std::string(typeName(getType())));
    for (const ObjectType ancestor : lineage(getType())) {
        for (const Field& field : classOf(ancestor).fields) {
            value.member(field.key) = field.write(*this);
        }
    }
    return value;
}

void Object::traceState(TraceLine& line) const {
    line.add("x", position.x);
    line.add("y", position.y);
    line.add("w", size.x);
    line.add("h", size.y);
}

} // namespace dunkman
