#pragma once

#include "json5/value.h"

#include <string>
#include <string_view>

namespace dunkman {

// One text for one value, the same on every platform and for every member order: what the developer programs
// print.

// Null, Bool and Integer as written in a file, Floats in hexadecimal, strings quoted, no white space, members
// in ascending byte order of their keys.
std::string canonicalText(const JsonValue& value);

// The bytes in double quotes; \\ and \" escaped, bytes below 0x20 or above 0x7e as \xHH.
std::string canonicalString(std::string_view bytes);

// The number as C99's %a prints it with the fewest digits: 0x1.8p+1, -0x0p+0, a leading 0 for subnormal
// numbers (0x0.0000000000001p-1022); nan, inf and -inf, whatever the sign of a nan.
std::string hexFloat(double number);
void appendHexFloat(std::string& text, double number);

} // namespace dunkman
