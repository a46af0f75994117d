#pragma once

#include "json5/reader.h"

namespace dunkman {

// The one primitive that every character goes through, inline for the reader's own sources.
inline char Json5Reader::read() {
    if (pushedBack) {
        pushedBack = false;
        return lastChar;
    }
    if (cursor == end) {
        meetEnd();
        return 0;
    }
    lastChar = *cursor++;
    return lastChar;
}

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
