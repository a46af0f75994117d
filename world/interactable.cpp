#include "world/interactable.h"

#include "world/object_class.h"
#include "world/trace_line.h"

namespace dunkman {

template <> const ObjectClass& objectClass<Interactable>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Interactable>(),
        .meaning = "Something that the hero notices when he is near, but cannot take.",
    };
    return record;
}

void Interactable::traceState(TraceLine& line) const {
    Movable::traceState(line);
    line.add("highlighted", highlighted);
}

} // namespace dunkman
