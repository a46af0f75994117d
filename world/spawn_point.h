#pragma once

#include "world/object.h"

namespace dunkman {

// A place where an arena may let a zombie in.
class SpawnPoint final : public Object {
public:
    static constexpr ObjectType type = ObjectType::SpawnPoint;

    ObjectType getType() const override { return type; }
};

} // namespace dunkman
