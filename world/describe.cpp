#include "world/describe.h"

#include <cstdio>

#include "world/object.h"

namespace dunkman {

std::string describe(const Object& object) {
    char place[64];
    std::snprintf(place, sizeof place, " at (%g, %g)", object.position.x, object.position.y);
    return std::string(typeName(object.getType())) + place;
}

} // namespace dunkman
