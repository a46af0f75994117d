#include "json5/reader.h"

#include "json5/decimal.h"
#include "json5/hex_digit.h"

#include <limits>
#include <stdexcept>

// The number rule. The 0 delivered at the end of the input is a character like any other here: it ends a
// number that is complete and is wrong anywhere else.

namespace dunkman {

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

} // namespace

void Json5Reader::parseNumber(char first, JsonValue& value) {
    if (first == 'N') {
        if (expect("aN", Expect::Hard)) {
            value.setFloat(std::numeric_limits<double>::quiet_NaN());
        }
        return;
    }
    const bool negative = first == '-';
    const char character = negative || first == '+' ? read() : first;
    if (character == 'I') {
        if (expect("nfinity", Expect::Hard)) {
            constexpr double infinity = std::numeric_limits<double>::infinity();
            value.setFloat(negative ? -infinity : infinity);
        }
        return;
    }
    if (character == '0') {
        const char next = peek();
        if (next == 'x' || next == 'X') {
            parseHexNumber(value);
            return;
        }
    }
    if (failed() || !parseShortNumber(negative, value)) {
        parseDecimalNumber(character, negative, value);
    }
}

// The number that begins with the character just taken, when it is of the usual form: at most 18 digits, no
// exponent, and text behind it. Leaves everything as it is otherwise.
bool Json5Reader::parseShortNumber(bool negative, JsonValue& value) {
    constexpr std::ptrdiff_t maxDigits = 18; // below 2^63
    const char* const first = cursor - 1;
    const char* next = first;
    std::uint64_t digits = 0;
    const auto takeDigit = [&digits](char digit) {
        digits = 10 * digits + static_cast<std::uint64_t>(digit - '0');
    };
    if (*next == '0') { // a leading zero is the whole integer part
        ++next;
    } else {
        for (; next != end && isDigit(*next); ++next) {
            takeDigit(*next);
        }
    }
    const std::ptrdiff_t integerDigits = next - first;
    std::ptrdiff_t fractionDigits = 0;
    const bool hasPoint = next != end && *next == '.';
    if (hasPoint) {
        const char* const fraction = ++next;
        for (; next != end && isDigit(*next); ++next) {
            takeDigit(*next);
        }
        fractionDigits = next - fraction;
    }
    const std::ptrdiff_t count = integerDigits + fractionDigits;
    if (count == 0 || count > maxDigits || next == end || *next == 'e' || *next == 'E') {
        return false;
    }
    cursor = next;
    pushedBack = true; // the character behind the number has been looked at
    if (hasPoint) {
        value.setFloat(floatFromDigits(digits, static_cast<int>(fractionDigits), negative));
    } else {
        const auto number = static_cast<std::int64_t>(digits);
        value.setInteger(negative ? -number : number);
    }
    return true;
}

// Stores sixteen times the number written, whatever its sign. Under a repeated key the number goes on from
// the Integer already there.
void Json5Reader::parseHexNumber(JsonValue& value) {
    read(); // the "x"
    std::uint64_t number = static_cast<std::uint64_t>(value.intValue()) << 4;
    bool anyDigit = false;
    for (int digit = hexDigitOf(read()); digit != notHexDigit; digit = hexDigitOf(read())) {
        anyDigit = true;
        number = (number + static_cast<std::uint64_t>(digit)) << 4;
    }
    pushBack();
    value.setInteger(static_cast<std::int64_t>(number));
    if (!anyDigit) {
        fail(Json5Error::Syntax, std::string("Unexpected '") + peek() + "', expected hexadecimal digit.");
    }
}

void Json5Reader::parseDecimalNumber(char first, bool negative, JsonValue& value) {
    const char* const start = cursor - 1;
    DecimalLiteral literal;
    literal.negative = negative;
    if (!scanDecimal(first, literal)) {
        fail(Json5Error::Syntax);
        return;
    }
    try {
        if (literal.hasPoint || !literal.exponentDigits.empty()) {
            value.setFloat(floatFromLiteral(literal));
        } else {
            value.setInteger(integerFromLiteral(literal));
        }
    } catch (const std::out_of_range& fault) {
        refuseNumber(fault.what(), start, literal);
    }
}

// The number began at `first`, or with a sign before it.
void Json5Reader::refuseNumber(const char* text, const char* first, const DecimalLiteral& literal) {
    if (first != begin && (first[-1] == '-' || first[-1] == '+')) {
        --first;
    }
    const std::string_view lastDigits = !literal.exponentDigits.empty()   ? literal.exponentDigits
                                        : !literal.fractionDigits.empty() ? literal.fractionDigits
                                                                          : literal.integerDigits;
    const char* const last = lastDigits.data() + lastDigits.size();
    cursor = first; // the place to report; nobody reads on from here
    pushedBack = false;
    countCharacters();
    throw NumberOutOfRange(text, {first, static_cast<std::size_t>(last - first)}, position);
}

// The digits from `character` on, which is left at the first other character.
std::string_view Json5Reader::takeDigits(char& character) {
    if (!isDigit(character)) {
        return {};
    }
    const char* const first = cursor - 1; // `character` is the last one taken
    while (cursor != end && isDigit(*cursor)) {
        ++cursor;
    }
    const std::string_view digits(first, static_cast<std::size_t>(cursor - first));
    character = read();
    return digits;
}

// Takes a literal apart and pushes back the character that ended it. False when it is none.
bool Json5Reader::scanDecimal(char character, DecimalLiteral& literal) {
    if (character == '0') { // a leading zero is the whole integer part
        literal.integerDigits = std::string_view(cursor - 1, 1);
        character = read();
    } else {
        literal.integerDigits = takeDigits(character);
    }
    if (character == '.') {
        literal.hasPoint = true;
        character = read();
        literal.fractionDigits = takeDigits(character);
    } else if (literal.integerDigits.empty()) {
        return false;
    }
    if (character == 'e' || character == 'E') {
        character = read();
        if (character == '+' || character == '-') {
            literal.exponentNegative = character == '-';
            character = read();
        }
        literal.exponentDigits = takeDigits(character);
        if (literal.exponentDigits.empty() || character == '.') {
            return false;
        }
    }
    pushBack();
    return !literal.integerDigits.empty() || !literal.fractionDigits.empty();
}

} // namespace dunkman
