#pragma once

#include "json5/reader.h"

#include <string>

namespace dunkman::test {

// The dialect once more, as plainly as it can be said: one character at a time from a standard stream, counters
// moved by every read, numbers through the standard library. A check on the shortcuts of the real reader.
// Numbers throw what the standard library throws; needs a long double of 64 significant bits.
void parsePlainly(const std::string& text, Json5Report& report, JsonValue& value);

} // namespace dunkman::test
