#pragma once

#include <cstdint>
#include <string_view>

namespace dunkman {

// A decimal literal taken apart: views of the digits where they stand in the text.
struct DecimalLiteral {
    bool negative = false;
    bool hasPoint = false;
    bool exponentNegative = false;
    std::string_view integerDigits;
    std::string_view fractionDigits;
    std::string_view exponentDigits;
};

// digits / 10^places, places from 0 to 27, converted like the literal below.
double floatFromDigits(std::uint64_t digits, int places, bool negative);

// The integer digits as a signed 64-bit number. Throws std::out_of_range("stoll argument out of range").
std::int64_t integerFromLiteral(const DecimalLiteral& literal);

// The literal as an extended-precision number (64-bit significand, 15-bit exponent, to nearest even) that is
// then stored as a double, the same on every platform. What fits the extended type but not the double becomes
// an infinity or a zero. Throws std::out_of_range("stold argument out of range") for a literal that does not
// fit the extended type: 2^16384 and above, or not zero and below 2^-16382.
double floatFromLiteral(const DecimalLiteral& literal);

} // namespace dunkman
