#pragma once

#include <memory>

#include "world/object_type.h"

namespace dunkman {

class Object;
class JsonValue;

// Frees an object as the class that it is: the family has no virtual destructor. Null is accepted.
void destroyObject(Object* object);

struct DestroyObject {
    void operator()(Object* object) const { destroyObject(object); }
};

// The owner of a world object that is not (or no longer) in the world.
template <class Kind> using Owned = std::unique_ptr<Kind, DestroyObject>;
using OwnedObject = Owned<Object>;

// A new object of a class that is known where it is made, with its class defaults. Classes that carry an
// image of their own look it up in the image table.
template <class Kind> Owned<Kind> makeObject() { return Owned<Kind>(new Kind); }

// A new object with its class defaults; nothing for Invalid.
OwnedObject createObject(ObjectType type);

// A new object of the class that `_type` names, with its properties read from the value. Nothing, and no
// report, when the value is no object or its `_type` is missing, no string, unknown or "Invalid".
OwnedObject createFromValue(const JsonValue& value);

} // namespace dunkman
