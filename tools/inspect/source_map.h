#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman::inspect {

struct SourceMember;

// Where a value of a data file stands in its text. Members and elements are in the order in which the value itself holds
// them: a repeated key counts at its first place, and what it adds is behind what was there.
struct SourcePlace {
    std::size_t offset = 0; // of the value's first character, of the last one under a repeated key
    bool isMixed = false;   // of what stands under a repeated key
    std::vector<SourceMember> members;
    std::vector<SourcePlace> elements;
};

struct SourceMember {
    std::string key;
    std::size_t keyOffset = 0;
    SourcePlace value;
};

struct RepeatedKey {
    std::string key;
    std::size_t offset = 0;
    std::size_t firstOffset = 0;
};

struct SourceMap {
    SourcePlace top;
    std::vector<RepeatedKey> repeatedKeys;       // but for those below a repeated key
    std::vector<std::size_t> hexNumbers;         // offsets
    std::optional<std::size_t> unreadableNumber; // the first one that makes the game's reader throw
    std::optional<std::size_t> openComment;      // a block comment without an end
};

// Walks a text as the game's reader does and notes what the reader has no use for. Of a text with a syntax fault it knows
// what comes before the fault, more or less.
SourceMap mapSource(std::string_view text);

} // namespace dunkman::inspect
