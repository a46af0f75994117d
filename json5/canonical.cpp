#include "json5/canonical.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <span>
#include <vector>

namespace dunkman {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

void appendInteger(std::string& text, std::int64_t number) {
    std::array<char, 24> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), result.ptr);
}

void appendString(std::string& text, std::string_view bytes) {
    text += '"';
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (byte == '"' || byte == '\\') {
            text += '\\';
            text += byte;
        } else if (code < 0x20 || code > 0x7e) {
            text += "\\x";
            text += hexDigits[code >> 4];
            text += hexDigits[code & 15];
        } else {
            text += byte;
        }
    }
    text += '"';
}

void appendValue(std::string& text, const JsonValue& value);

void appendArray(std::string& text, std::span<const JsonValue> elements) {
    text += '[';
    std::string_view separator;
    for (const JsonValue& element : elements) {
        text += separator;
        separator = ",";
        appendValue(text, element);
    }
    text += ']';
}

void appendObject(std::string& text, const JsonMembers& members) {
    std::vector<const JsonMember*> sorted;
    sorted.reserve(members.size());
    for (const JsonMember& member : members) {
        sorted.push_back(&member);
    }
    // Keys differ, and string comparison is by unsigned bytes.
    std::sort(sorted.begin(), sorted.end(),
              [](const JsonMember* left, const JsonMember* right) { return left->key() < right->key(); });
    text += '{';
    std::string_view separator;
    for (const JsonMember* member : sorted) {
        text += separator;
        separator = ",";
        appendString(text, member->key());
        text += ':';
        appendValue(text, member->value);
    }
    text += '}';
}

void appendValue(std::string& text, const JsonValue& value) {
    switch (value.kind) {
    case JsonKind::Bool:
        text += value.boolValue() ? "true" : "false";
        break;
    case JsonKind::Integer:
        appendInteger(text, value.intValue());
        break;
    case JsonKind::Float:
        appendHexFloat(text, value.floatValue());
        break;
    case JsonKind::String:
        appendString(text, value.stringValue());
        break;
    case JsonKind::Array:
        appendArray(text, value.arrayValue());
        break;
    case JsonKind::Object:
        appendObject(text, value.objectValue());
        break;
    case JsonKind::Null:
        text += "null";
        break;
    }
}

} // namespace

std::string canonicalText(const JsonValue& value) {
    std::string text;
    appendValue(text, value);
    return text;
}

std::string canonicalString(std::string_view bytes) {
    std::string text;
    appendString(text, bytes);
    return text;
}

std::string hexFloat(double number) {
    std::string text;
    appendHexFloat(text, number);
    return text;
}

void appendHexFloat(std::string& text, double number) {
    constexpr int fractionBits = 52;
    constexpr int fieldMask = 0x7ff;
    constexpr int bias = 1023;
    const auto bits = std::bit_cast<std::uint64_t>(number);
    const bool negative = (bits >> 63) != 0;
    const int field = static_cast<int>(bits >> fractionBits) & fieldMask;
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << fractionBits) - 1);
    if (field == fieldMask) {
        text += fraction != 0 ? "nan" : negative ? "-inf" : "inf";
        return;
    }

    std::array<char, 32> buffer; // "-0x1.", 13 digits, "p-1022"
    char* out = buffer.data();
    if (negative) {
        *out++ = '-';
    }
    *out++ = '0';
    *out++ = 'x';
    *out++ = field != 0 ? '1' : '0';
    if (fraction != 0) {
        *out++ = '.';
        const int last = std::countr_zero(fraction) & ~3; // lowest bit of the last digit that is not 0
        for (int shift = fractionBits - 4; shift >= last; shift -= 4) {
            *out++ = hexDigits[(fraction >> shift) & 15];
        }
    }
    int exponent = field != 0 ? field - bias : fraction != 0 ? 1 - bias : 0;
    *out++ = 'p';
    *out++ = exponent < 0 ? '-' : '+';
    exponent = exponent < 0 ? -exponent : exponent;
    for (int power = exponent >= 1000  ? 1000
                     : exponent >= 100 ? 100
                     : exponent >= 10  ? 10
                                       : 1;
         power != 0; power /= 10) {
        *out++ = static_cast<char>('0' + exponent / power % 10);
    }
    text.append(buffer.data(), out);
}

} // namespace dunkman
