#pragma once

#include "world/drawable.h"

namespace dunkman {

// A strip of surf: many copies of one picture side by side, bobbing together.
class Wave final : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::Wave;

    ObjectType getType() const override { return type; }
    void draw() override;
};

} // namespace dunkman
