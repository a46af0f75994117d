#pragma once

#include <string_view>

#include "json5/value.h"
#include "tools/inspect/source_map.h"

namespace dunkman::inspect {

// Whether a map of a sound text has the members and elements that the game's reader found in it, and each value begins
// where something of its kind can begin.
bool hasShapeOf(const SourcePlace& place, const JsonValue& value, std::string_view text);

} // namespace dunkman::inspect
