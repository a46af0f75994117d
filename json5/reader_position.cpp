#include "json5/reader.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// The counters. They follow from the characters taken, so they are brought up to date only when somebody
// wants to know.

namespace dunkman {

namespace {

// Eight characters at a time: a byte that is no line feed leaves the top bit of its place set.
std::uint64_t countLineFeeds(std::string_view text) {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t lowBits = 0x7f * ones;
    std::uint64_t count = 0;
    while (text.size() >= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data(), sizeof word);
        word ^= static_cast<unsigned char>('\n') * ones;
        const std::uint64_t others = ((word & lowBits) + lowBits) | word;
        count += ((~others >> 7) & ones) * ones >> 56; // the sum of the eight bytes ends up in the topmost
        text.remove_prefix(sizeof word);
    }
    for (const char character : text) {
        count += character == '\n' ? 1 : 0;
    }
    return count;
}

} // namespace

void Json5Reader::countCharacters() {
    const char* const delivered = pushedBack ? cursor + 1 : cursor;
    const std::string_view text(countedUpTo, static_cast<std::size_t>(delivered - countedUpTo));
    countedUpTo = delivered;
    position.characters += text.size();
    const std::uint64_t lines = countLineFeeds(text);
    if (lines == 0) {
        position.column += text.size();
        return;
    }
    const std::size_t last = text.rfind('\n');
    position.previousLineLength =
        lines == 1 ? position.column + last + 1 : last - text.substr(0, last).rfind('\n');
    position.line += lines;
    position.column = text.size() - last - 1;
}

} // namespace dunkman
