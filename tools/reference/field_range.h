#pragma once

#include <string>

#include "world/field.h"

namespace dunkman::reference {

// "0 to 4", "above 0", "0 or more"; empty for any sensible number.
std::string rangeText(const FieldRange& range);

} // namespace dunkman::reference
