#pragma once

#include "json5/value.h"

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace dunkman {

// Appends the number as a standard stream prints it by default, with six significant digits, and ".0" when
// that has no point: inf.0 and nan.0 too. Asks no stream: its locale and, on some platforms, its width of
// exponents and its words for infinities differ.
void appendFloat(std::string& text, double number);

// Prints values in the game's own layout: quoted keys, no comments, no trailing commas, no line feed at the
// end. An array is spread over lines only when its first element is an Object; an object whenever it has
// members and there is an indent unit. Strings and keys go out byte for byte, because the reader translates
// no escapes: one that holds a double quote does not read back. Floats have six significant digits; one whose
// text has no point gets ".0" (1e+06.0, inf.0, nan.0 - none of which reads back). Text and numbers are the
// same on every platform.
class Json5Writer {
public:
    // Appends to `text`, which must outlive the writer. An empty indent `unit` gives compact output.
    Json5Writer(std::string& text, std::string_view unit) : out(text), indentUnit(unit) {}

    // `depth` is the nesting level of the value, 0 at the top.
    void write(const JsonValue& value, int depth = 0);

private:
    void writeArray(std::span<const JsonValue> elements, int depth);
    void writeObject(const JsonMembers& members, int depth);
    void indent(int depth);

    std::string& out;
    std::string_view indentUnit;
};

// The same in one call. Stream errors are not reported.
void writeJson5(const JsonValue& value, std::string& text, std::string_view indentUnit, int depth = 0);
void writeJson5(const JsonValue& value, std::ostream& stream, std::string_view indentUnit, int depth = 0);

} // namespace dunkman
