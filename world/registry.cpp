#include "world/registry.h"

#include <array>

#include "json5/value.h"
#include "world/object.h"
#include "world/object_class.h"

namespace dunkman {

namespace {

constexpr ObjectClass invalidClass;

const ObjectClass& classOfInvalid() { return invalidClass; }

constexpr std::array<const ObjectClass& (*)(), objectTypeCount> classTable = {
    &classOfInvalid,
#define OBJECT_TYPE(number, name, parent) &objectClass<name>,
#include "world/object_types.inc"
#undef OBJECT_TYPE
};

} // namespace

const ObjectClass& classOf(ObjectType type) { return classTable[indexOf(type)](); }

const Field* findField(ObjectType type, std::string_view key) {
    for (const ObjectType ancestor : lineage(type)) {
        for (const Field& field : classOf(ancestor).fields) {
            if (field.key == key) {
                return &field;
            }
        }
    }
    return nullptr;
}

void destroyObject(Object* object) {
    if (object != nullptr) {
        classOf(object->getType()).lifetime.destroy(object);
    }
}

OwnedObject createObject(ObjectType type) {
    const auto create = classOf(type).lifetime.create;
    return OwnedObject(create != nullptr ? create() : nullptr);
}

OwnedObject createFromValue(const JsonValue& value) {
    if (value.kind != JsonKind::Object) {
        return nullptr;
    }
    const JsonValue& name = value.get("_type");
    if (name.kind != JsonKind::String) {
        return nullptr;
    }
    const auto type = typeFromName(name.stringValue());
    if (!type) {
        return nullptr;
    }
    OwnedObject object = createObject(*type);
    if (object) {
        object->readProperties(value);
    }
    return object;
}

} // namespace dunkman
