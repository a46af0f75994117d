#pragma once

#include "world/weapon.h"

namespace dunkman {

// The inflatable flamingo: a melee weapon that never breaks.
class Flamingo final : public Weapon {
public:
    static constexpr ObjectType type = ObjectType::Flamingo;

    Flamingo();
    ObjectType getType() const override { return type; }
};

} // namespace dunkman
