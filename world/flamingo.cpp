#include "world/flamingo.h"

#include <array>

#include "world/object_class.h"

namespace dunkman {

namespace {

constexpr std::array<std::string_view, 1> images = {"flamingo"};

} // namespace

template <> const ObjectClass& objectClass<Flamingo>() {
    static constexpr ObjectClass record{
        .lifetime = ObjectLifetime::of<Flamingo>(),
        .meaning = "The inflatable flamingo: a melee weapon that never breaks.",
        .images = images,
    };
    return record;
}

Flamingo::Flamingo() {
    size.y = 1.2;
    useImage(images[0]);
    autoMirror = true;
    inverseMirror = true;
    fitWidthToImage();
}

} // namespace dunkman
