#pragma once

#include <string>

#include "json5/value.h"

namespace dunkman {

// parseFile for the game itself: a number that does not fit stops it with a message that names file, place and key.
JsonValue loadDataFile(const std::string& path);

} // namespace dunkman
