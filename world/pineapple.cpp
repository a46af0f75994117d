#include "world/pineapple.h"

#include <array>

#include "world/object_class.h"

namespace dunkman {

namespace {

constexpr std::array<std::string_view, 1> images = {"pineapple"};

} // namespace

template <> const ObjectClass& objectClass<Pineapple>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Pineapple>(),
        .meaning = "A weapon to throw: five throws, one a second.",
        .images = images,
    };
    return record;
}

Pineapple::Pineapple() {
    durability = 5;
    size.y = 0.8;
    useImage(images[0]);
    fitWidthToImage();
    handPivot = {0.5, 0.25};
    attackTimeout = {1.0};
    timeoutAnimationPercentage = 0.2;
    attackArc = {0.0, -90.0}; // no forward swing; the back swing lifts the fruit
}

} // namespace dunkman
