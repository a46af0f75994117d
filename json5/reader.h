#pragma once

#include "json5/value.h"

#include <cstdint>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <string_view>

namespace dunkman {

struct DecimalLiteral;

enum class Json5Error : std::uint32_t {
    None = 0,
    UnsupportedEscape = 1, // \u with four hexadecimal digits
    Syntax = 2,
    StreamFailed = 3, // not at its end, yet not readable; a missing file too
    SecondPushBack = 4,
    EndOfInput = 5, // also left behind by a sound file that ends right after its value: no fault
};

// What has been read so far. All counters start at 0; a line feed belongs to the line it ends.
struct Json5Position {
    std::uint64_t characters = 0;
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    std::uint64_t previousLineLength = 0;
};

struct Json5Report {
    Json5Error code = Json5Error::None;
    std::string message; // empty for many codes
    Json5Position position;
};

// Thrown for a number that does not fit. what() is the standard library's text.
class NumberOutOfRange : public std::out_of_range {
public:
    NumberOutOfRange(const char* text, std::string_view itsLiteral, const Json5Position& itsStart)
        : std::out_of_range(text), literal(itsLiteral), start(itsStart) {}

    void addKey(std::string_view key) { keys.insert(0, std::string(key) + (keys.empty() ? "" : ".")); }

    std::string literal;
    Json5Position start; // of the literal
    std::string
        keys; // of the objects that it stands in, from the outermost, with points between; may be empty
};

inline constexpr std::uint32_t maxJson5Bytes = 64u << 20u; // of a file

// Reads the value of a whole file. A missing or unreadable file gives Null; a faulty one what was built up to
// the fault, without a word unless a report is asked for. Throws NumberOutOfRange, and stops the game with a message
// when the file is a pipe or a device, larger than maxJson5Bytes, or more than memory holds.
JsonValue parseFile(const std::string& path);
JsonValue parseFile(const std::string& path, Json5Report& report);

// The same for a stream, which is read to its end, and for a text in memory.
void parseDocument(std::istream& stream, Json5Report& report, JsonValue& value);
void parseDocument(std::string_view text, Json5Report& report, JsonValue& value);

// Reader of the game's JSON5 dialect: one character at a time with one character of pushback, over bytes in
// memory. Every rule returns at the first error it meets, so the value keeps what had been filled in. Several
// habits of the dialect look like mistakes (hexadecimal numbers are sixteen times what is written, a skip
// takes one comment, an escape of two hexadecimal digits does not end the escape); files rely on them, so
// they stay.
class Json5Reader {
public:
    enum class Expect { Soft, Hard };

    // `text` must outlive the reader. `atEnd` is the code recorded when the text runs out.
    explicit Json5Reader(std::string_view text, Json5Error atEnd = Json5Error::EndOfInput);

    // One document from here on into `value`.
    void parseDocument(JsonValue& value);

    // The error state and the position reached.
    Json5Report report();

    // The primitives that all rules are made of. At the end they record the code and deliver 0.
    char read();
    char peek();     // the next byte of the text; a character pushed back is not looked at
    void pushBack(); // the next read delivers the last character again
    // Reads the literal. At the first mismatch Hard records an error, Soft puts the matched characters back
    // into the text, whose place in the counters they keep.
    bool expect(std::string_view literal, Expect mode);

private:
    bool failed() const { return code != Json5Error::None; }
    void fail(Json5Error error, std::string text = {});
    void clearError();
    void meetEnd();
    void countCharacters();

    void skip();
    void skipSlowly();
    char readNext();
    bool takeComment(char first);
    void takeLineComment();
    void takeBlockComment();

    void parseValue(JsonValue& value);
    bool parseKeyword(std::string_view rest, JsonKind kind, bool flag, JsonValue& value);
    void parseObject(JsonValue& value);
    void parseMember(const JsonMembers& members, JsonValue& member);
    void parseArray(JsonValue& value);
    bool enterNesting();

    void parseKey();
    void parseUnquotedKey();
    void parseString(char delimiter);
    void parseUnusualString(char delimiter);
    bool parseEscape(char escaped);
    bool readHexByte();
    void readUnsupportedUnicode();

    void parseNumber(char first, JsonValue& value);
    void parseHexNumber(JsonValue& value);
    bool parseShortNumber(bool negative, JsonValue& value);
    void parseDecimalNumber(char first, bool negative, JsonValue& value);
    bool scanDecimal(char character, DecimalLiteral& literal);
    [[noreturn]] void refuseNumber(const char* text, const char* first, const DecimalLiteral& literal);
    std::string_view takeDigits(char& character);

    const char* const begin;
    const char* const end;
    const char* cursor;      // the next character to be delivered
    bool pushedBack = false; // that one has been delivered, and counts as read, already
    bool endMet = false;
    const Json5Error endCode;
    Json5Error code = Json5Error::None;
    std::string message;
    int nesting = 0;
    std::string_view token;  // the key or string just read, in the text itself or in `buffer`
    std::string buffer;      // its characters when they differ from those of the text
    const char* countedUpTo; // characters before it are in `position`
    Json5Position position;
};

// In the header because every character goes through it.
inline char Json5Reader::read() {
    if (cursor == end) {
        meetEnd();
        return 0;
    }
    pushedBack = false;
    return *cursor++;
}

} // namespace dunkman
