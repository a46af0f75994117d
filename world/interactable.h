#pragma once

#include "world/movable.h"

namespace dunkman {

// Something that the hero notices. Only weapons among them can be taken.
class Interactable : public Movable {
public:
    static constexpr ObjectType type = ObjectType::Interactable;

    ObjectType getType() const override { return type; }
    void traceState(TraceLine& line) const override;

    bool highlighted = false; // the hero would take this one; not saved
};

} // namespace dunkman
