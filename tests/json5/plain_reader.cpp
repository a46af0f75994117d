#include "tests/json5/plain_reader.h"

#include "tests/json5/plain_stream.h"

#include <cctype>
#include <cstddef>
#include <limits>

namespace dunkman::test {

namespace {

struct PlainReader : PlainStream {
    void value(JsonValue& target) {
        skip();
        if (failed()) {
            return;
        }
        const char character = read();
        if (failed()) {
            return;
        }
        if ((character == '{' || character == '[') && depth == 1000) {
            fail(2, "Nesting is deeper than 1000 levels.");
            return;
        }
        ++depth;
        valueStartingWith(character, target);
        --depth;
        skip();
    }

    void valueStartingWith(char character, JsonValue& target) {
        if (character == '{') {
            object(target);
        } else if (character == '[') {
            array(target);
        } else if (character == 34 || character == 39) {
            target.setString(string(character));
        } else {
            if (character == 'f' && expect("alse", true)) {
                target.setBool(false);
            } else if (!failed() && character == 't' && expect("rue", true)) {
                target.setBool(true);
            } else if (!failed() && character == 'n' && expect("ull", true)) {
                target.kind = JsonKind::Null;
            } else if (!failed()) {
                number(character, target);
            }
        }
    }

    void object(JsonValue& target) {
        target.kind = JsonKind::Object;
        skip();
        if (failed()) {
            return;
        }
        char character = read();
        if (failed() || character == '}') {
            return;
        }
        while (true) {
            pushBack();
            const std::string name = key();
            if (failed()) {
                return;
            }
            JsonValue& member = target.objectValue()[name];
            skip();
            if (failed()) {
                return;
            }
            character = read();
            if (failed()) {
                return;
            }
            if (character != ':') {
                fail(2, std::string("Expected ':' instead of '") + character + "'.");
                return;
            }
            value(member);
            if (failed()) {
                return;
            }
            character = read();
            if (failed() || character == '}') {
                return;
            }
            if (character != ',') {
                fail(2, std::string("Expected '}' instead of '") + character + "'.");
                return;
            }
            skip();
            if (failed()) {
                return;
            }
            character = read();
            if (failed() || character == '}') {
                return;
            }
        }
    }

    void array(JsonValue& target) {
        target.kind = JsonKind::Array;
        skip();
        skip();
        while (!failed()) {
            char character = read();
            if (failed() || character == ']') {
                return;
            }
            pushBack();
            value(target.append());
            if (failed()) {
                return;
            }
            character = read();
            if (failed() || character == ']') {
                return;
            }
            if (character != ',') {
                fail(2, std::string("Expected ']' instead of '") + character + "'.");
                return;
            }
            skip();
        }
    }

    std::string key() {
        char character = read();
        if (failed()) {
            return "";
        }
        if (character == 34) {
            return string(34);
        }
        std::string name;
        while (character != ':' && character != '}' && character != ',') {
            if (character == '\\') {
                character = read();
                if (failed()) {
                    return "";
                }
                if (character == 'u') {
                    unicode();
                } else {
                    fail(2, "Unexpected '\\'.");
                }
                return "";
            }
            name += character;
            character = read();
            if (failed()) {
                return "";
            }
        }
        pushBack();
        return name;
    }

    void unicode() {
        for (int count = 0; count < 4; ++count) {
            const char character = read();
            if (failed()) {
                return;
            }
            if (std::isxdigit(static_cast<unsigned char>(character)) == 0) {
                fail(2, std::string("Invalid unicode escape code, expected 4 hexadecimal digits, not ") +
                            peek() + ".");
                return;
            }
        }
        fail(1, "Wchar & UTF8 support was disabled during compilation of the library.");
    }

    std::string string(char delimiter) {
        std::string text;
        bool escape = false;
        while (true) {
            const char character = read();
            if (failed()) {
                return "";
            }
            if (!escape) {
                if (character == delimiter) {
                    return text;
                }
                if (character == 13 || character == 10) {
                    fail(2, "Unexpected line break.");
                    return "";
                }
                if (character == '\\') {
                    escape = true;
                } else {
                    text += character;
                }
            } else if (character == 'x') {
                std::string digits;
                for (int count = 0; count < 2; ++count) {
                    const char digit = read();
                    if (failed()) {
                        return "";
                    }
                    if (std::isxdigit(static_cast<unsigned char>(digit)) == 0) {
                        fail(2, std::string("Invalid hex escape code, expected 2 hexadecimal digits, not ") +
                                    peek() + ".");
                        return "";
                    }
                    digits += digit;
                }
                text += static_cast<char>(static_cast<unsigned char>(std::stoi(digits, nullptr, 16)));
            } else if (character == 'u') {
                unicode();
                return "";
            } else if (character == 13) {
                const char next = read();
                if (failed()) {
                    return "";
                }
                if (next != 10) {
                    pushBack();
                }
                escape = false;
            } else if (character != 10) {
                text += '\\';
                text += character;
                escape = false;
            }
        }
    }

    void number(char first, JsonValue& target) {
        if (first == 'N') {
            if (expect("aN", false)) {
                target.setFloat(std::numeric_limits<double>::quiet_NaN());
            }
            return;
        }
        char character = first;
        if (first == '+' || first == '-') {
            character = read();
        }
        if (character == 'I') {
            if (expect("nfinity", false)) {
                target.setFloat(std::numeric_limits<double>::infinity() * (first == '-' ? -1 : 1));
            }
            return;
        }
        if (character == '0' && (peek() == 'x' || peek() == 'X')) {
            hexNumber(target);
            return;
        }
        decimalNumber(character, first == '-', target);
    }

    void hexNumber(JsonValue& target) {
        read();
        auto built = static_cast<std::uint64_t>(target.intValue()) * 16;
        int digits = 0;
        char character = read();
        while (std::isxdigit(static_cast<unsigned char>(character)) != 0) {
            built = (built + std::stoul(std::string(1, character), nullptr, 16)) * 16;
            ++digits;
            character = read();
        }
        pushBack();
        target.setInteger(static_cast<std::int64_t>(built));
        if (digits == 0) {
            fail(2, std::string("Unexpected '") + peek() + "', expected hexadecimal digit.");
        }
    }

    // The machine of states 0 to 6, where `character` is looked at again unless it is taken.
    void decimalNumber(char character, bool negative, JsonValue& target) {
        std::string whole;
        std::string fraction;
        std::string exponent;
        bool exponentNegative = false;
        bool point = false;
        int state = 0;
        while (state != 7) {
            const bool digit = character >= '0' && character <= '9';
            bool taken = false;
            switch (state) {
            case 0:
                taken = digit;
                whole += digit ? std::string(1, character) : "";
                state = digit && character != '0' ? 1 : 2;
                break;
            case 1:
                taken = digit;
                whole += digit ? std::string(1, character) : "";
                state = digit ? 1 : 2;
                break;
            case 2:
                taken = point = character == '.';
                if (!point && whole.empty()) {
                    fail(2);
                    return;
                }
                state = point ? 3 : 4;
                break;
            case 3:
                taken = digit;
                fraction += digit ? std::string(1, character) : "";
                state = digit ? 3 : 4;
                break;
            case 4:
                taken = character == 'e' || character == 'E';
                state = taken ? 5 : 7;
                break;
            case 5:
                taken = character == '+' || character == '-';
                exponentNegative = character == '-';
                state = 6;
                break;
            default:
                taken = digit;
                exponent += digit ? std::string(1, character) : "";
                if (!digit && (character == '.' || exponent.empty())) {
                    fail(2);
                    return;
                }
                state = digit ? 6 : 7;
                break;
            }
            if (taken) {
                character = read();
            }
        }
        pushBack();
        if (whole.empty() && fraction.empty()) {
            fail(2);
            return;
        }
        const std::string text = (negative ? "-" : "") + whole + (fraction.empty() ? "" : ".") + fraction +
                                 (exponent.empty()   ? ""
                                  : exponentNegative ? "e-"
                                                     : "e") +
                                 exponent;
        if (point || !exponent.empty()) {
            target.setFloat(static_cast<double>(std::stold(text)));
        } else {
            target.setInteger(std::stoll(text));
        }
    }

    void document(JsonValue& target) {
        if (peek() == 0) {
            target.kind = JsonKind::Null;
            return;
        }
        skip();
        value(target);
        if (failed() || stream.eof()) {
            return;
        }
        skip();
        char character = 0;
        if (!failed()) {
            character = read();
        }
        if (!failed()) {
            fail(2, std::string("Unexpected '") + character + "' after value. Expected end of file.");
        } else if (report.code == Json5Error::EndOfInput) {
            fail(0);
        }
    }
};

} // namespace

void parsePlainly(const std::string& text, Json5Report& report, JsonValue& value) {
    PlainReader reader;
    reader.stream.str(text);
    reader.document(value);
    report = reader.report;
}

} // namespace dunkman::test
