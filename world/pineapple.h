#pragma once

#include "world/ranged_weapon.h"

namespace dunkman {

// Five throws, one a second.
class Pineapple final : public RangedWeapon {
public:
    static constexpr ObjectType type = ObjectType::Pineapple;

    Pineapple();
    ObjectType getType() const override { return type; }
};

} // namespace dunkman
