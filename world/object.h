#pragma once

#include "base/geometry.h"
#include "json5/value.h"
#include "world/object_type.h"

namespace dunkman {

class TraceLine;

// Root of everything that lives in a game. Objects in play belong to the world; they are made and freed
// through world/registry.h. The family has no virtual destructor: an object is freed as the class that it
// is.
class Object {
public:
    static constexpr ObjectType type = ObjectType::Object;

    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    // The exact class.
    virtual ObjectType getType() const { return type; }

    // World units; minY is the lower edge.
    virtual Rect getBounds() const;

    // The two passes of a step. Neither may insert into or remove from the world except through its queues.
    virtual void update() {}
    virtual void lateUpdate() {}

    // Sets the fields whose keys are present and of a fitting kind, as the lists of the class and its ancestors
    // have them; everything else stays, so that a second value can be laid over the first. A class overrides it
    // only for a rule beyond its list.
    virtual void readProperties(const JsonValue& value);

    // A fresh object value with `_type` and every field of those lists.
    virtual JsonValue writeProperties() const;

    // Appends what a trace of the world shows of the object, the bases' part first. Names and order are a contract
    // with whoever compares traces; they are not those of the data files, and much of it is state that no file sets.
    virtual void traceState(TraceLine& line) const;

    // Fields of data files, as in every class of the family: what they mean is told in the list at the top of the
    // class's source.
    Vec2 position;
    Vec2 size{1.0, 1.0};

protected:
    ~Object() = default;

private:
    friend struct ObjectLifetime;
    friend class World;

    bool leaving = false; // marked by the world while it applies its queues, false at all other times
};

} // namespace dunkman
