#pragma once

#include <string>

#include "json5/value.h"
#include "world/object_type.h"

namespace dunkman::reference {

// What an object of a class writes right after it was made. Pictures count as square.
JsonValue defaultsOf(ObjectType type);

// Whether the class makes itself as wide as its own picture asks for.
bool widthFollowsPicture(ObjectType type);

// A value as a data file would have it, numbers without needless digits: [0.5, 2].
std::string plainText(const JsonValue& value);

} // namespace dunkman::reference
