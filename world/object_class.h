#pragma once

#include <new>
#include <span>
#include <string_view>

#include "world/field.h"
#include "world/object_type.h"

namespace dunkman {

class Object;

// How an object of a class begins and ends. The only one that may end the life of a plain Object.
struct ObjectLifetime {
    Object* (*create)() = nullptr;
    void (*destroy)(Object* object) = nullptr;

    template <class Kind> static constexpr ObjectLifetime of() { return {&createAs<Kind>, &destroyAs<Kind>}; }

private:
    template <class Kind> static Object* createAs() { return new Kind; }

    template <class Kind> static void destroyAs(Object* object) {
        // The destructor is called by its qualified name: `object` is exactly a Kind, though Kind may be a
        // base of other classes, which is why compilers distrust a delete expression here.
        Kind* exact = static_cast<Kind*>(object);
        exact->Kind::~Kind();
        ::operator delete(static_cast<void*>(exact));
    }
};

// What a class says about itself. It is constant data, so it can be asked for at any moment of start-up.
struct ObjectClass {
    ObjectLifetime lifetime;
    std::string_view meaning;                 // what it is, in a sentence for whoever writes data files
    std::span<const Field> fields;            // those that it adds to its parent's, in the order of writing
    std::string_view rule;                    // what reading does beyond setting fields; empty: nothing
    std::span<const std::string_view> images; // keys of the pictures that its constructor looks up
};

// Defined in the source of each class; a row of object_types.inc without such a source does not link.
template <class Kind> const ObjectClass& objectClass();

#define OBJECT_TYPE(number, name, parent)                                                                    \
    class name;                                                                                              \
    template <> const ObjectClass& objectClass<name>();
#include "world/object_types.inc"
#undef OBJECT_TYPE

// The same by number; an empty record for Invalid.
const ObjectClass& classOf(ObjectType type);

// The field of a class, its ancestors' included; null when it has no field of that key.
const Field* findField(ObjectType type, std::string_view key);

} // namespace dunkman
