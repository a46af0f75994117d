#include "json5/reader.h"

#include "json5/hex_digit.h"

#include <array>

// Keys and strings. Nearly all stand in the text as they are and are taken from there.

namespace dunkman {

namespace {

// Characters that need a look, so that the others can be taken as one run.
using CharacterSet = std::array<bool, 256>;

constexpr CharacterSet makeSet(std::string_view characters) {
    CharacterSet set{};
    for (const char character : characters) {
        set[static_cast<unsigned char>(character)] = true;
    }
    return set;
}

constexpr CharacterSet stringSpecials = makeSet("\"'\\\r\n");
constexpr CharacterSet keySpecials = makeSet(":},\\");

const char* findSpecial(const char* first, const char* last, const CharacterSet& specials) {
    while (first != last && !specials[static_cast<unsigned char>(*first)]) {
        ++first;
    }
    return first;
}

} // namespace

void Json5Reader::parseKey() {
    const char first = read();
    if (failed()) {
        return;
    }
    if (first == '"') {
        parseString(first);
    } else {
        parseUnquotedKey();
    }
}

// From its first character, which is taken, up to ":", "}" or ","; white space, quotes and whatever else
// stands before that is part of the key.
void Json5Reader::parseUnquotedKey() {
    const char* const first = cursor - 1;
    cursor = findSpecial(first, end, keySpecials);
    const char ending = read();
    if (failed()) {
        return;
    }
    if (ending != '\\') {
        pushBack();
        token = std::string_view(first, static_cast<std::size_t>(cursor - first));
        return;
    }
    const char escaped = read();
    if (failed()) {
        return;
    }
    if (escaped == 'u') {
        readUnsupportedUnicode();
    } else {
        fail(Json5Error::Syntax, "Unexpected '\\'.");
    }
}

// Behind the opening quote, up to and with the closing one.
void Json5Reader::parseString(char delimiter) {
    const char* const first = cursor;
    cursor = findSpecial(first, end, stringSpecials);
    const std::string_view plain(first, static_cast<std::size_t>(cursor - first));
    if (cursor != end && *cursor == delimiter) {
        ++cursor;
        token = plain;
    } else {
        buffer = plain;
        parseUnusualString(delimiter);
        token = buffer;
    }
}

// Goes on in front of the first character that needs a look, the others being in the buffer.
void Json5Reader::parseUnusualString(char delimiter) {
    bool escaping = false;
    while (true) {
        const char character = read();
        if (failed()) {
            return;
        }
        if (escaping) {
            escaping = parseEscape(character);
            if (failed()) {
                return;
            }
        } else if (character == delimiter) {
            return;
        } else if (character == '\r' || character == '\n') {
            fail(Json5Error::Syntax, "Unexpected line break.");
            return;
        } else if (character == '\\') {
            escaping = true;
        } else {
            buffer += character;
        }
    }
}

// The character behind a backslash. Answers whether the next one is escaped as well, which is so after a byte
// in hexadecimal and after a bare line feed.
bool Json5Reader::parseEscape(char escaped) {
    switch (escaped) {
    case 'x':
        return readHexByte();
    case 'u':
        readUnsupportedUnicode();
        return false;
    case '\n':
        return true;
    case '\r': {
        const char next = read();
        if (!failed() && next != '\n') {
            pushBack();
        }
        return false;
    }
    default: // nothing is translated: the backslash stays
        buffer += '\\';
        buffer += escaped;
        return false;
    }
}

bool Json5Reader::readHexByte() {
    int byte = 0;
    for (int count = 0; count < 2; ++count) {
        const char character = read();
        if (failed()) {
            return false;
        }
        const int digit = hexDigitOf(character);
        if (digit == notHexDigit) {
            // Names the character behind the offending one, here and below.
            fail(Json5Error::Syntax,
                 std::string("Invalid hex escape code, expected 2 hexadecimal digits, not ") + peek() + ".");
            return false;
        }
        byte = 16 * byte + digit;
    }
    buffer += static_cast<char>(static_cast<unsigned char>(byte));
    return true;
}

void Json5Reader::readUnsupportedUnicode() {
    for (int count = 0; count < 4; ++count) {
        const char character = read();
        if (failed()) {
            return;
        }
        if (hexDigitOf(character) == notHexDigit) {
            fail(Json5Error::Syntax,
                 std::string("Invalid unicode escape code, expected 4 hexadecimal digits, not ") + peek() +
                     ".");
            return;
        }
    }
    fail(Json5Error::UnsupportedEscape,
         "Wchar & UTF8 support was disabled during compilation of the library.");
}

} // namespace dunkman
