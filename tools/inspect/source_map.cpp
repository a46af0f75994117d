#include "tools/inspect/source_map.h"

#include <exception>
#include <unordered_map>

#include "json5/hex_digit.h"
#include "json5/reader.h"

namespace dunkman::inspect {

namespace {

bool isWhitespace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

bool isPartOfScalar(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '+' || character == '-' || character == '.';
}

// The rules of Json5Reader for a text without fault. Every rule answers false where it cannot go on.
class SourceWalker {
public:
    explicit SourceWalker(std::string_view source) : text(source) {}

    SourceMap walk() {
        skip();
        takeValue(map.top);
        skip();
        return std::move(map);
    }

private:
    bool isAtEnd() const { return cursor == text.size(); }
    bool isAt(char character) const { return !isAtEnd() && text[cursor] == character; }

    bool take(char character) {
        if (!isAt(character)) {
            return false;
        }
        ++cursor;
        return true;
    }

    // White space up to the first other character, or up to the end of the first comment.
    void skip() {
        while (!isAtEnd() && isWhitespace(text[cursor])) {
            ++cursor;
        }
        const std::string_view opening = text.substr(cursor, 2);
        if (opening == "//") {
            const std::size_t end = text.find_first_of("\r\n", cursor);
            cursor = end == std::string_view::npos ? text.size() : end + 1;
        } else if (opening == "/*") {
            const std::size_t end = text.find("*/", cursor + opening.size());
            if (end == std::string_view::npos) {
                map.openComment = cursor;
            }
            cursor = end == std::string_view::npos ? text.size() : end + 2;
        }
    }

    bool takeValue(SourcePlace& place) {
        skip();
        place.offset = cursor;
        if (isAtEnd()) {
            return false;
        }
        const bool taken = text[cursor] == '{'                           ? takeObject(place)
                           : text[cursor] == '['                         ? takeArray(place)
                           : text[cursor] == '"' || text[cursor] == '\'' ? takeString()
                                                                         : takeScalar();
        skip();
        return taken;
    }

    bool takeObject(SourcePlace& place) {
        if (nesting == maxJsonNesting) {
            return false;
        }
        ++nesting;
        std::unordered_map<std::string, std::size_t> numbers;
        for (std::size_t number = 0; number < place.members.size(); ++number) {
            numbers.emplace(place.members[number].key, number);
        }
        ++cursor;
        skip();
        while (!isAt('}')) {
            const std::size_t keyOffset = cursor;
            if (!takeKey()) {
                return false;
            }
            const auto [found, isNew] = numbers.emplace(token, place.members.size());
            if (isNew) {
                place.members.push_back({token, keyOffset, {}});
            }
            SourceMember& member = place.members[found->second];
            skip();
            if (!take(':') || !(isNew ? takeValue(member.value) : takeRepeated(member, keyOffset))) {
                return false;
            }
            if (take(',')) {
                skip();
            } else if (!isAt('}')) {
                return false;
            }
        }
        ++cursor;
        --nesting;
        return true;
    }

    bool takeRepeated(SourceMember& member, std::size_t keyOffset) {
        if (repetition == 0) {
            map.repeatedKeys.push_back({member.key, keyOffset, member.keyOffset});
        }
        member.value.isMixed = true;
        ++repetition;
        const bool taken = takeValue(member.value);
        --repetition;
        return taken;
    }

    bool takeArray(SourcePlace& place) {
        if (nesting == maxJsonNesting) {
            return false;
        }
        ++nesting;
        ++cursor;
        skip();
        skip();
        while (!isAt(']')) {
            place.elements.emplace_back();
            if (!takeValue(place.elements.back())) {
                return false;
            }
            if (take(',')) {
                skip();
            } else if (!isAt(']')) {
                return false;
            }
        }
        ++cursor;
        --nesting;
        return true;
    }

    bool takeKey() {
        if (isAt('"')) {
            return takeString();
        }
        const std::size_t end = text.find_first_of(":},\\", cursor);
        if (end == std::string_view::npos || text[end] == '\\') {
            return false;
        }
        token = text.substr(cursor, end - cursor);
        cursor = end;
        return true;
    }

    bool takeString() {
        const char delimiter = text[cursor++];
        token.clear();
        bool escaping = false;
        for (; !isAtEnd(); ++cursor) {
            const char character = text[cursor];
            if (escaping) {
                escaping = takeEscaped(character);
            } else if (character == delimiter) {
                ++cursor;
                return true;
            } else if (character == '\\') {
                escaping = true;
            } else {
                token += character;
            }
        }
        return false;
    }

    // Leaves the cursor at the last character taken. Answers whether the next one is escaped as well.
    bool takeEscaped(char character) {
        if (character == 'x' && text.size() - cursor > 2) {
            token += static_cast<char>(16 * hexDigitOf(text[cursor + 1]) + hexDigitOf(text[cursor + 2]));
            cursor += 2;
            return true;
        }
        if (character == '\n') {
            return true;
        }
        if (character == '\r') {
            cursor += text.substr(cursor + 1).starts_with('\n') ? 1u : 0u;
        } else {
            token += '\\';
            token += character;
        }
        return false;
    }

    // A number or a keyword.
    bool takeScalar() {
        const std::size_t first = cursor;
        while (!isAtEnd() && isPartOfScalar(text[cursor])) {
            ++cursor;
        }
        const std::string_view scalar = text.substr(first, cursor - first);
        if (scalar.find_first_of("xX") != std::string_view::npos) {
            map.hexNumbers.push_back(first);
        } else if (!map.unreadableNumber && !isReadable(scalar)) {
            map.unreadableNumber = first;
        }
        return !scalar.empty();
    }

    static bool isReadable(std::string_view scalar) {
        constexpr std::size_t surelyReadable = 18; // digits; with an exponent nothing is sure
        if (scalar.size() <= surelyReadable && scalar.find_first_of("eE") == std::string_view::npos) {
            return true;
        }
        try {
            Json5Report ignoredReport;
            JsonValue ignored;
            parseDocument(scalar, ignoredReport, ignored);
        } catch (const std::exception&) {
            return false;
        }
        return true;
    }

    std::string_view text;
    std::size_t cursor = 0;
    int nesting = 0;
    int repetition = 0; // repeated keys that the value belongs to
    std::string token;  // the key just taken
    SourceMap map;
};

} // namespace

SourceMap mapSource(std::string_view text) { return SourceWalker(text).walk(); }

} // namespace dunkman::inspect
