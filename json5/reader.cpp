#include "json5/reader.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "base/fatal.h"
#include "base/file_contents.h"

namespace dunkman {

namespace {

bool isWhitespace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

const char* findNoWhitespace(const char* first, const char* last) {
    // Lines are indented by many spaces.
    constexpr std::string_view spaces = "        ";
    while (last - first >= std::ptrdiff_t{spaces.size()} &&
           std::memcmp(first, spaces.data(), spaces.size()) == 0) {
        first += spaces.size();
    }
    while (first != last && isWhitespace(*first)) {
        ++first;
    }
    return first;
}

std::string insteadOf(char expected, char found) {
    return std::string("Expected '") + expected + "' instead of '" + found + "'.";
}

} // namespace

Json5Reader::Json5Reader(std::string_view text, Json5Error atEnd)
    : begin(text.data()), end(text.data() + text.size()), cursor(begin), endCode(atEnd), countedUpTo(begin) {}

Json5Report Json5Reader::report() {
    countCharacters();
    return {code, message, position};
}

void Json5Reader::parseDocument(JsonValue& value) {
    if (peek() == 0) {
        value.kind = JsonKind::Null;
        return;
    }
    skip();
    parseValue(value);
    if (failed() || endMet) {
        return;
    }
    skip();
    const char character = failed() ? '\0' : read();
    if (!failed()) {
        fail(Json5Error::Syntax,
             std::string("Unexpected '") + character + "' after value. Expected end of file.");
    } else if (code == Json5Error::EndOfInput) {
        clearError();
    }
}

// Primitives

void Json5Reader::fail(Json5Error error, std::string text) {
    code = error;
    message = std::move(text);
}

void Json5Reader::clearError() { fail(Json5Error::None); }

void Json5Reader::meetEnd() {
    endMet = true;
    fail(endCode);
}

char Json5Reader::peek() {
    const char* const next = pushedBack ? cursor + 1 : cursor;
    if (next == end) {
        meetEnd();
        return 0;
    }
    return *next;
}

void Json5Reader::pushBack() {
    if (pushedBack) {
        fail(Json5Error::SecondPushBack);
    } else if (cursor != begin) {
        --cursor;
        pushedBack = true;
    }
}

bool Json5Reader::expect(std::string_view literal, Expect mode) {
    for (std::size_t matched = 0; matched < literal.size(); ++matched) {
        const char character = read();
        if (character == literal[matched]) {
            continue;
        }
        if (mode == Expect::Hard) {
            fail(Json5Error::Syntax, insteadOf(literal[matched], character));
        } else if (!endMet) { // a stream at its end takes nothing back
            countCharacters();
            cursor -= matched;
            countedUpTo = cursor;
        }
        return false;
    }
    return true;
}

// White space and comments

// Takes white space up to the first other character, or up to the end of the first comment.
inline void Json5Reader::skip() {
    if (failed()) {
        return;
    }
    const char* const next = findNoWhitespace(cursor, end);
    if (next != end && *next != '/') {
        cursor = next;
        pushedBack = true; // having been looked at
    } else {
        skipSlowly();
    }
}

// The same by the letter, for comments and for the end of the text.
void Json5Reader::skipSlowly() {
    char character = read();
    if (failed() || takeComment(character)) {
        return; // an end met by this first read stays recorded
    }
    while (isWhitespace(character)) {
        character = read();
        if (failed()) {
            clearError();
            return;
        }
        if (takeComment(character)) {
            return;
        }
    }
    pushBack();
}

// The next character behind what is skipped.
inline char Json5Reader::readNext() {
    skip();
    return failed() ? '\0' : read();
}

// True when `first` began a comment, which is then consumed, or when the text ended right behind a slash.
bool Json5Reader::takeComment(char first) {
    if (first != '/') {
        return false;
    }
    const char second = read();
    if (failed()) {
        return true;
    }
    if (second == '/') {
        takeLineComment();
    } else if (second == '*') {
        takeBlockComment();
    } else {
        // The skip pushes the slash back as well, which is one too many: a stray slash ends in
        // SecondPushBack.
        pushBack();
        return false;
    }
    if (failed()) {
        clearError(); // the comment ran to the end of the input
    }
    return true;
}

void Json5Reader::takeLineComment() {
    for (char character = read(); !failed() && character != '\n' && character != '\r';) {
        character = read();
    }
}

void Json5Reader::takeBlockComment() {
    bool afterStar = false;
    for (char character = read(); !failed() && !(afterStar && character == '/'); character = read()) {
        afterStar = character == '*';
    }
}

// Values

void Json5Reader::parseValue(JsonValue& value) {
    const char character = readNext();
    if (failed()) {
        return;
    }
    switch (character) {
    case '{':
        parseObject(value);
        break;
    case '[':
        parseArray(value);
        break;
    case '"':
    case '\'':
        value.setString({});
        parseString(character);
        if (!failed()) {
            value.setString(token);
        }
        break;
    case 'f':
        if (!parseKeyword("alse", JsonKind::Bool, false, value)) {
            return;
        }
        break;
    case 't':
        if (!parseKeyword("rue", JsonKind::Bool, true, value)) {
            return;
        }
        break;
    case 'n':
        if (!parseKeyword("ull", JsonKind::Null, false, value)) {
            return;
        }
        break;
    default:
        parseNumber(character, value);
        break;
    }
    skip();
}

// The rest of a keyword. False after an error; a mistaken keyword ends as a number without digits.
bool Json5Reader::parseKeyword(std::string_view rest, JsonKind kind, bool flag, JsonValue& value) {
    if (!expect(rest, Expect::Soft)) {
        if (!failed()) {
            fail(Json5Error::Syntax);
        }
        return false;
    }
    if (kind == JsonKind::Bool) {
        value.setBool(flag);
    } else {
        value.kind = kind;
    }
    return true;
}

bool Json5Reader::enterNesting() {
    if (nesting == maxJsonNesting) {
        fail(Json5Error::Syntax, "Nesting is deeper than 1000 levels.");
        return false;
    }
    ++nesting;
    return true;
}

void Json5Reader::parseObject(JsonValue& value) {
    if (!enterNesting()) {
        return;
    }
    value.kind = JsonKind::Object;
    JsonMembers* members = nullptr; // an empty object needs no memory for them
    char character = readNext();
    while (!failed() && character != '}') {
        pushBack();
        parseKey();
        if (failed()) {
            return;
        }
        if (members == nullptr) {
            members = &value.objectValue();
        }
        JsonValue& member = (*members)[token];
        character = readNext();
        if (failed()) {
            return;
        }
        if (character != ':') {
            fail(Json5Error::Syntax, insteadOf(':', character));
            return;
        }
        parseMember(*members, member);
        if (failed()) {
            return;
        }
        character = read();
        if (failed() || character == '}') {
            break;
        }
        if (character != ',') {
            fail(Json5Error::Syntax, insteadOf('}', character));
            return;
        }
        character = readNext();
    }
    --nesting;
}

// A number out of range stops all reading; on its way out it learns under which keys it stands.
void Json5Reader::parseMember(const JsonMembers& members, JsonValue& member) {
    try {
        parseValue(member);
    } catch (NumberOutOfRange& fault) {
        for (const JsonMember& candidate : members) {
            if (&candidate.value == &member) {
                fault.addKey(candidate.key());
            }
        }
        throw;
    }
}

void Json5Reader::parseArray(JsonValue& value) {
    if (!enterNesting()) {
        return;
    }
    value.kind = JsonKind::Array;
    skip();
    char character = readNext(); // behind a comment there may be white space
    while (!failed() && character != ']') {
        pushBack();
        parseValue(value.append());
        if (failed()) {
            return;
        }
        character = read();
        if (failed() || character == ']') {
            break;
        }
        if (character != ',') {
            fail(Json5Error::Syntax, insteadOf(']', character));
            return;
        }
        character = readNext();
    }
    --nesting;
}

// Entry points

void parseDocument(std::string_view text, Json5Report& report, JsonValue& value) {
    Json5Reader reader(text);
    reader.parseDocument(value);
    report = reader.report();
}

JsonValue parseFile(const std::string& path, Json5Report& report) {
    const FileContents file = readDataFile(path, maxJson5Bytes);
    return namingFile(path, [&file, &report] {
        Json5Reader reader(file.bytes.text(),
                           file.fault == FileFault::None ? Json5Error::EndOfInput : Json5Error::StreamFailed);
        JsonValue value;
        reader.parseDocument(value);
        report = reader.report();
        return value;
    });
}

JsonValue parseFile(const std::string& path) {
    Json5Report dropped;
    return parseFile(path, dropped);
}

} // namespace dunkman
