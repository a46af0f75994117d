#pragma once

namespace dunkman {

inline constexpr int notHexDigit = -1;

inline int hexDigitOf(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'a' && character <= 'f') {
        return character - 'a' + 10;
    }
    return character >= 'A' && character <= 'F' ? character - 'A' + 10 : notHexDigit;
}

} // namespace dunkman
