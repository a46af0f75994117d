#include "world/spawn_point.h"

#include "world/object_class.h"

namespace dunkman {

template <> const ObjectClass& objectClass<SpawnPoint>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<SpawnPoint>(),
        .meaning = "A place where a fight may let a zombie in, if it is in view when the fight starts.",
    };
    return record;
}

} // namespace dunkman
