#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dunkman {

// The numbers are part of the data model: the property code and the writer switch on them.
enum class JsonKind : std::uint32_t {
    Bool = 0,
    Integer = 1,
    Float = 2,
    String = 3,
    Array = 4,
    Object = 5,
    Null = 6
};

struct JsonMember;
struct JsonValue;

// The members of an object: exact-byte keys, each at most once, walked in the order of their first insertion,
// so the order is the same on every platform. References to a member's value stay valid until the container
// itself is cleared, assigned or destroyed, also while other members are inserted.
class JsonMembers {
public:
    class Iterator;

    JsonMembers();
    JsonMembers(const JsonMembers& other); // deep copy
    JsonMembers(JsonMembers&& other) noexcept;
    JsonMembers& operator=(const JsonMembers& other);
    JsonMembers& operator=(JsonMembers&& other) noexcept;
    ~JsonMembers();

    // The member's value, or null when there is no such member.
    const JsonValue* find(std::string_view key) const;
    JsonValue* find(std::string_view key);
    bool contains(std::string_view key) const;

    // The member's value; a missing member is inserted first, as Null.
    JsonValue& operator[](std::string_view key);

    void clear();
    std::size_t size() const;
    bool empty() const { return size() == 0; }
    Iterator begin() const;
    Iterator end() const;

private:
    struct Table;

    JsonMember* findMember(std::string_view key) const;
    JsonMember& append(std::string_view key);
    void enterIndex(std::size_t number);
    void indexLast();

    // Behind a pointer because most values are no objects, and every value carries every field. Null while
    // there are no members.
    std::unique_ptr<Table> table;
};

// One value of a data file. A plain record, not a union: all fields are there always and `kind` says which
// one counts. The other fields stay as they are when the kind changes, which shows when a file repeats a key.
// Copies are deep. Copying and destroying recurse, so whoever builds values must keep their nesting bounded:
// the reader stops at `maxJsonNesting` levels of arrays and objects.
struct JsonValue {
    JsonValue() = default;
    JsonValue(const JsonValue& other) = default;
    JsonValue(JsonValue&& other) noexcept = default; // leaves the scalars, takes string, elements and members
    JsonValue& operator=(const JsonValue& other);    // `other` may be a part of this value
    JsonValue& operator=(JsonValue&& other) noexcept; // the same
    ~JsonValue() = default;

    JsonKind kind = JsonKind::Null;
    bool boolValue = false;
    std::int64_t intValue = 0;
    double floatValue = 0.0;
    std::string stringValue; // bytes as read, UTF-8 by convention
    std::vector<JsonValue> arrayValue;
    JsonMembers objectValue;

    static JsonValue makeBool(bool value);
    static JsonValue makeInteger(std::int64_t value);
    static JsonValue makeFloat(double value);
    static JsonValue makeString(std::string value);
    static JsonValue makeArray(std::vector<JsonValue> elements = {});
    static JsonValue makeObject();
    static JsonValue makePair(double x, double y); // an Array of two Floats

    // The shared read-only Null that stands for every absent member.
    static const JsonValue& null();

    bool isNumber() const { return kind == JsonKind::Integer || kind == JsonKind::Float; }

    // Members. These look at `objectValue` whatever the kind is; a value that never was an Object has none.
    const JsonValue* find(std::string_view key) const; // null when absent
    const JsonValue& get(std::string_view key) const;  // the shared Null when absent
    const JsonMembers*
    findObject(std::string_view key) const; // null unless the member is there and an Object
    bool contains(std::string_view key) const;

    // The member, inserted as Null when absent. Does not change `kind`: start from makeObject().
    JsonValue& member(std::string_view key);

    // Appends a Null element and returns it; the reference holds until the next append. Does not change
    // `kind`.
    JsonValue& append();

    // Typed reads: another kind is reported to `jsonKindMismatchHandler`, then the field is read all the
    // same.
    bool asBool() const;
    std::int64_t asInteger() const;
    double asFloat() const;
    const std::string& asString() const;
    const std::vector<JsonValue>& asArray() const;
    const JsonMembers& asObject() const;
};

struct JsonMember {
    std::string key;
    JsonValue value;
};

// Members stand in blocks that never move: four here, then as many again with every further block. Few
// objects of the game's files need a second allocation.
struct JsonMembers::Table {
    static constexpr std::size_t firstSize = 4;

    JsonMember& at(std::size_t number) {
        if (number < firstSize) {
            return first[number];
        }
        const auto block = static_cast<std::size_t>(std::bit_width(number / firstSize)) - 1;
        return blocks[block]
                     [number - (firstSize << block)]; // block b holds the numbers from 4 << b to 8 << b
    }

    std::array<JsonMember, firstSize> first;
    std::vector<std::unique_ptr<JsonMember[]>> blocks;
    std::size_t count = 0;
    std::vector<std::uint32_t> slots; // open addressing over member number + 1; empty while members are few
};

class JsonMembers::Iterator {
public:
    Iterator(Table* walked, std::size_t position) : table(walked), number(position) {}
    const JsonMember& operator*() const { return table->at(number); }
    const JsonMember* operator->() const { return &table->at(number); }
    Iterator& operator++() {
        ++number;
        return *this;
    }
    bool operator==(const Iterator& other) const = default;

private:
    Table* table;
    std::size_t number;
};

inline std::size_t JsonMembers::size() const { return table ? table->count : 0; }
inline JsonMembers::Iterator JsonMembers::begin() const { return Iterator(table.get(), 0); }
inline JsonMembers::Iterator JsonMembers::end() const { return Iterator(table.get(), size()); }

// The deepest nesting of arrays and objects that the reader builds. It bounds the stack that reading,
// copying, writing and destroying a value can need.
inline constexpr int maxJsonNesting = 1000;

// Called by the typed reads with the value and the kind that was wanted. Null unless a program or test sets
// it.
using JsonKindMismatchHandler = void (*)(const JsonValue& value, JsonKind wanted);
extern JsonKindMismatchHandler jsonKindMismatchHandler;
void resetJsonKindMismatchHandler();

// Reads a number or a pair of numbers into x and y, Integers as doubles:
// - a Float or an Integer sets both;
// - an Array of exactly two elements sets x from the first and y from the second, each only when it is a
// number,
//   and y only after x could be set: [1, "a"] sets x alone, ["a", 1] nothing;
// - anything else leaves both as they are.
// Answers whether x was set.
bool readPair(const JsonValue& value, double& x, double& y);

} // namespace dunkman
