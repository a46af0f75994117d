#include "json5/members.h"

#include <bit>
#include <utility>

namespace dunkman {

namespace {

// Up to here a walk over the keys beats hashing one.
constexpr std::size_t maxMembersWithoutIndex = 10;

// 64-bit FNV-1a.
std::size_t hashKey(std::string_view key) {
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char byte : key) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3u;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

} // namespace

JsonMembers::JsonMembers(const JsonMembers& other) {
    for (const JsonMember& member : other) {
        JsonMember& copy = append();
        copy.name = member.name;
        copy.value = member.value;
        indexLast(copy);
    }
}

JsonMembers::JsonMembers(JsonMembers&& other) noexcept
    : first(std::move(other.first)), more(std::move(other.more)), last(std::exchange(other.last, nullptr)),
      count(std::exchange(other.count, 0)), index(std::move(other.index)) {}

JsonMembers& JsonMembers::operator=(const JsonMembers& other) { return *this = JsonMembers(other); }

JsonMembers& JsonMembers::operator=(JsonMembers&& other) noexcept {
    // Taken out before anything is dropped: `other` may live inside one of our own members.
    JsonMembers taken(std::move(other));
    first.swap(taken.first);
    more.swap(taken.more);
    last = taken.last;
    count = taken.count;
    index.swap(taken.index);
    return *this;
}

JsonMembers::~JsonMembers() { dropChain(); }

void JsonMembers::clear() {
    first = {};
    dropChain();
    last = nullptr;
    count = 0;
    index.reset();
}

// One block after the other: a chain left to itself is destroyed recursively.
void JsonMembers::dropChain() {
    while (more) {
        more = std::move(more->next);
    }
}

const JsonMember* JsonMembers::findMember(std::string_view key) const {
    if (!index) {
        for (const JsonMember& member : *this) {
            if (member.key() == key) {
                return &member;
            }
        }
        return nullptr;
    }
    for (const JsonMember& member : first) {
        if (member.key() == key) {
            return &member;
        }
    }
    const std::size_t mask = index->size() - 1;
    for (std::size_t slot = hashKey(key) & mask; (*index)[slot] != nullptr; slot = (slot + 1) & mask) {
        if ((*index)[slot]->key() == key) {
            return (*index)[slot];
        }
    }
    return nullptr;
}

// A new member behind the others; the index is not told.
JsonMember& JsonMembers::append() {
    const std::size_t number = count;
    JsonMember* member = nullptr;
    if (number < firstSize) {
        member = &first[number];
    } else {
        const std::size_t place = (number - firstSize) % blockSize;
        if (place == 0) {
            std::unique_ptr<Block>& link = last != nullptr ? last->next : more;
            link = std::make_unique<Block>();
            last = link.get();
        }
        member = &last->members[place];
    }
    ++count;
    return *member;
}

// Enters a member of the chain into the index, which has a free slot.
void JsonMembers::enterIndex(JsonMember& member) {
    const std::size_t mask = index->size() - 1;
    std::size_t slot = hashKey(member.key()) & mask;
    while ((*index)[slot] != nullptr) {
        slot = (slot + 1) & mask;
    }
    (*index)[slot] = &member;
}

// Keeps at least twice as many slots as members, once there are enough members to be worth it.
void JsonMembers::indexLast(JsonMember& member) {
    if (count <= maxMembersWithoutIndex) {
        return;
    }
    if (index && 2 * count <= index->size()) {
        enterIndex(member);
        return;
    }
    index = std::make_unique<std::vector<JsonMember*>>(4 * std::bit_ceil(count), nullptr);
    std::size_t left = count - firstSize;
    for (Block* block = more.get(); block != nullptr; block = block->next.get()) {
        for (std::size_t place = 0; place < blockSize && left > 0; ++place, --left) {
            enterIndex(block->members[place]);
        }
    }
}

const JsonValue* JsonMembers::find(std::string_view key) const {
    const JsonMember* const member = findMember(key);
    return member != nullptr ? &member->value : nullptr;
}

JsonValue* JsonMembers::find(std::string_view key) {
    return const_cast<JsonValue*>(std::as_const(*this).find(key)); // of our own members, which are not const
}

JsonValue& JsonMembers::operator[](std::string_view key) {
    if (JsonValue* const found = find(key)) {
        return *found;
    }
    JsonMember& member = append();
    member.name.setString(key);
    indexLast(member);
    return member.value;
}

} // namespace dunkman
