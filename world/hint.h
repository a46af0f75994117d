#pragma once

#include "world/drawable.h"

namespace dunkman {

// A hopping pointer at something worth noticing.
class Hint final : public Drawable {
public:
    static constexpr ObjectType type = ObjectType::Hint;

    ObjectType getType() const override { return type; }
    void draw() override;
};

} // namespace dunkman
