#pragma once

#include <string>
#include <string_view>

namespace dunkman {

class Object;

// Appends one line with the class and the fields of an object: "WORD Flamingo x=0x1p+0 y=…", ended by a line
// feed.
void appendObjectLine(std::string& out, const Object& object, std::string_view word);

// Appends the whole world, objects by ascending type number and in bucket order, as "object" lines; a
// Player's line is followed by that of the weapon in hand as a "held" line.
void appendWorldTrace(std::string& out);

} // namespace dunkman
