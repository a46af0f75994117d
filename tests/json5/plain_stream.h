#pragma once

#include "json5/reader.h"

#include <istream>
#include <sstream>
#include <string>

namespace dunkman::test {

// The primitives of the plain reader: one character at a time, with one of pushback, and what is skipped between
// tokens.
struct PlainStream {
    std::istringstream stream;
    Json5Report report;
    bool pushedBack = false;
    char lastChar = 0;
    int depth = 0;

    bool failed() const { return report.code != Json5Error::None; }

    void fail(int code, const std::string& message = "") {
        report.code = static_cast<Json5Error>(code);
        report.message = message;
    }

    char read() {
        if (pushedBack) {
            pushedBack = false;
            return lastChar;
        }
        char character = 0;
        if (!stream.get(character)) {
            fail(stream.eof() ? 5 : 3);
            return 0;
        }
        lastChar = character;
        Json5Position& at = report.position;
        at.characters += 1;
        at.column += 1;
        if (character == 10) {
            at.line += 1;
            at.previousLineLength = at.column;
            at.column = 0;
        }
        return character;
    }

    char peek() {
        const int next = stream.peek();
        if (next == std::istringstream::traits_type::eof()) {
            fail(stream.eof() ? 5 : 3);
            return 0;
        }
        return static_cast<char>(next);
    }

    void pushBack() {
        if (pushedBack) {
            fail(4);
        }
        pushedBack = true;
    }

    bool expect(const std::string& literal, bool soft) {
        for (std::size_t index = 0; index < literal.size(); ++index) {
            const char character = read();
            if (character == literal[index]) {
                continue;
            }
            if (soft) {
                for (std::size_t back = 0; back < index; ++back) {
                    stream.unget();
                }
            } else {
                fail(2, std::string("Expected '") + literal[index] + "' instead of '" + character + "'.");
            }
            return false;
        }
        return true;
    }

    static bool isSpace(char character) {
        return character == 32 || character == 9 || character == 10 || character == 13;
    }

    // 0: no comment, 1: a comment was consumed, 2: an error was met.
    int comment(char character) {
        if (character != '/') {
            return 0;
        }
        char next = read();
        if (failed()) {
            return 2;
        }
        if (next == '/') {
            do {
                next = read();
            } while (!failed() && next != 10 && next != 13);
        } else if (next == '*') {
            char before = 0;
            while (true) {
                next = read();
                if (failed() || (before == '*' && next == '/')) {
                    break;
                }
                before = next;
            }
        } else {
            pushBack();
            return 0;
        }
        if (failed()) {
            fail(0);
        }
        return 1;
    }

    void skip() {
        if (failed()) {
            return;
        }
        char character = read();
        if (failed() || comment(character) != 0) {
            return;
        }
        while (isSpace(character)) {
            character = read();
            if (failed()) {
                fail(0);
                return;
            }
            if (comment(character) != 0) {
                return;
            }
        }
        pushBack();
    }
};

} // namespace dunkman::test
