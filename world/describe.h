#pragma once

#include <string>

namespace dunkman {

class Object;

// "Arena at (12, -0.5)": how messages name an object.
std::string describe(const Object& object);

} // namespace dunkman
