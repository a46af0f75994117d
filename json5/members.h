#pragma once

#include "json5/json_value.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace dunkman {

// A member of an object.
class JsonMember {
    friend class JsonMembers;
    JsonValue name; // a String

public:
    JsonValue value;

    std::string_view key() const { return name.stringValue(); }
};

// The members of an object: exact-byte keys, each at most once, walked in the order of their first insertion,
// so the order is the same on every platform. References to a member's value stay valid until the container
// itself is cleared, assigned, moved or destroyed, also while other members are inserted.
class JsonMembers {
public:
    class Iterator;

    JsonMembers() = default;
    JsonMembers(const JsonMembers& other); // deep copy
    JsonMembers(JsonMembers&& other) noexcept;
    JsonMembers& operator=(const JsonMembers& other); // `other` may be a part of one of these members
    JsonMembers& operator=(JsonMembers&& other) noexcept;
    ~JsonMembers();

    // The member's value, or null when there is no such member.
    const JsonValue* find(std::string_view key) const;
    JsonValue* find(std::string_view key);
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    // The member's value; a missing member is inserted first, as Null.
    JsonValue& operator[](std::string_view key);

    void clear();
    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    Iterator begin() const;
    Iterator end() const;

private:
    // Members stand in blocks that never move, chained. The first lies in the object itself and has just the
    // room that small objects need.
    static constexpr std::size_t firstSize = 2;
    static constexpr std::size_t blockSize = 3;
    struct Block;

    const JsonMember* findMember(std::string_view key) const;
    JsonMember& append();
    void enterIndex(JsonMember& member);
    void indexLast(JsonMember& member);
    void dropChain();

    std::array<JsonMember, firstSize> first;
    std::unique_ptr<Block> more;
    Block* last = nullptr; // in the chain that begins with `more`
    std::size_t count = 0;
    // Open addressing over the members of the chain; null while they are few.
    std::unique_ptr<std::vector<JsonMember*>> index;
};

struct JsonMembers::Block {
    std::array<JsonMember, blockSize> members;
    std::unique_ptr<Block> next;
};

class JsonMembers::Iterator {
public:
    // Walks `left` members: those from `position` up to `end`, then the blocks from `following` on.
    Iterator(const JsonMember* position, const JsonMember* end, const Block* following, std::size_t count)
        : member(position), blockEnd(end), next(following), left(count) {}
    const JsonMember& operator*() const { return *member; }
    const JsonMember* operator->() const { return member; }
    Iterator& operator++() {
        --left;
        if (++member == blockEnd && next != nullptr) {
            member = next->members.data();
            blockEnd = member + blockSize;
            next = next->next.get();
        }
        return *this;
    }
    bool operator==(const Iterator& other) const { return left == other.left; }

private:
    const JsonMember* member;
    const JsonMember* blockEnd;
    const Block* next;
    std::size_t left;
};

inline JsonMembers::Iterator JsonMembers::begin() const {
    return Iterator(first.data(), first.data() + firstSize, more.get(), count);
}

inline JsonMembers::Iterator JsonMembers::end() const { return Iterator(nullptr, nullptr, nullptr, 0); }

} // namespace dunkman
