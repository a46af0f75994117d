#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace dunkman {

// The numbers are part of the data model: the property code and the writer switch on them.
enum class JsonKind : std::uint8_t {
    Bool = 0,
    Integer = 1,
    Float = 2,
    String = 3,
    Array = 4,
    Object = 5,
    Null = 6
};

class JsonMembers;
struct JsonArrayBlock;

// One value of a data file. It behaves as a plain record in which every field is there always, and `kind`
// says which one counts: the other fields stay as they are when the kind changes, which shows when a file
// repeats a key. Nearly every value has had one kind only, so it takes the room of one field; the rare others
// keep theirs elsewhere. Copies are deep. Copying and destroying recurse, so whoever builds values must keep
// their nesting bounded: the reader stops at `maxJsonNesting` levels of arrays and objects.
class JsonValue {
    // What `bytes` holds. From LongString on it is a pointer to something that the value owns.
    enum class Held : std::uint8_t {
        Nothing,
        Bool,
        Integer,
        Float,
        ShortString,
        LongString,
        Array,
        Object,
        Several
    };

    // One value for each field of a value that has had several kinds, under the number of its kind.
    using Fields = std::array<JsonValue, 6>;

    static constexpr std::size_t maxShortString = 13;

    // A number, a pointer, or a short string with its length in the last byte. Together with `held` and
    // `kind` these are 16 bytes, since large files are read as fast as memory takes their values.
    alignas(8) std::array<char, maxShortString + 1> bytes{};
    Held held = Held::Nothing;

public:
    JsonKind kind = JsonKind::Null;

    JsonValue() = default;
    JsonValue(const JsonValue& other);
    JsonValue(JsonValue&& other) noexcept;            // leaves a Null behind
    JsonValue& operator=(const JsonValue& other);     // `other` may be a part of this value
    JsonValue& operator=(JsonValue&& other) noexcept; // the same
    ~JsonValue();

    static JsonValue makeBool(bool value);
    static JsonValue makeInteger(std::int64_t value);
    static JsonValue makeFloat(double value);
    static JsonValue makeString(std::string_view value);
    static JsonValue makeArray(std::vector<JsonValue> elements = {});
    static JsonValue makeObject();
    static JsonValue makePair(double x, double y); // an Array of two Floats

    // The shared read-only Null that stands for every absent member.
    static const JsonValue& null();

    bool isNumber() const { return kind == JsonKind::Integer || kind == JsonKind::Float; }

    // The fields, whatever the kind is: false, 0 or empty where nothing was put. Views and references hold
    // until the value changes; a short string lies in the value itself, so a view of it does not survive a
    // move either.
    bool boolValue() const;
    std::int64_t intValue() const;
    double floatValue() const;
    std::string_view stringValue() const; // bytes as read, UTF-8 by convention
    std::span<const JsonValue> arrayValue() const&;
    std::span<JsonValue> arrayValue() &;
    void arrayValue() && = delete; // the elements would be gone
    const JsonMembers& objectValue() const&;
    JsonMembers& objectValue() &;
    JsonMembers objectValue() &&; // moved out, so that a loop may walk the members of a passing value

    // Change the kind and the field that counts then; the other fields stay. Appending and inserting below do
    // not touch the kind: start from makeArray() or makeObject(), or assign `kind`.
    void setBool(bool value);
    void setInteger(std::int64_t value);
    void setFloat(double value);
    void setString(std::string_view value);

    // Appends a Null element and returns it; the reference holds until the next append.
    JsonValue& append();

    // Members. These look at the members whatever the kind is; a value that never was an Object has none.
    const JsonValue* find(std::string_view key) const; // null when absent
    const JsonValue& get(std::string_view key) const;  // the shared Null when absent
    const JsonMembers*
    findObject(std::string_view key) const; // null unless the member is there and an Object
    bool contains(std::string_view key) const;
    JsonValue& member(std::string_view key); // inserted as Null when absent

    // Typed reads: another kind is reported to `jsonKindMismatchHandler`, then the field is read all the
    // same.
    bool asBool() const;
    std::int64_t asInteger() const;
    double asFloat() const;
    std::string_view asString() const;
    std::span<const JsonValue> asArray() const;
    const JsonMembers& asObject() const;

private:
    template <typename Type> Type load() const;
    template <typename Type> void store(Held what, Type content);

    bool ownsMemory() const { return held >= Held::LongString; }
    void release();
    void copyOwned(const JsonValue& other);
    const JsonValue& holderOf(JsonKind field) const;
    JsonValue& holderFor(JsonKind field);
    JsonValue& holderBesides(JsonKind field);
    void putString(std::string_view value);
};

// What follows is in the header because every value of a large tree comes by there, some of it several times.
inline JsonValue::JsonValue(JsonValue&& other) noexcept
    : bytes(other.bytes), held(other.held), kind(other.kind) {
    other.held = Held::Nothing;
    other.kind = JsonKind::Null;
}

inline JsonValue::~JsonValue() {
    if (ownsMemory()) {
        release();
    }
}

template <typename Type> Type JsonValue::load() const {
    static_assert(std::is_trivially_copyable_v<Type> && sizeof(Type) <= maxShortString);
    Type content;
    std::memcpy(&content, bytes.data(), sizeof content);
    return content;
}

template <typename Type> void JsonValue::store(Held what, Type content) {
    static_assert(std::is_trivially_copyable_v<Type> && sizeof(Type) <= maxShortString);
    std::memcpy(bytes.data(), &content, sizeof content);
    held = what;
}

inline JsonValue& JsonValue::holderFor(JsonKind field) {
    return held == Held::Nothing ? *this : holderBesides(field);
}

inline void JsonValue::setBool(bool value) {
    kind = JsonKind::Bool;
    holderFor(JsonKind::Bool).store(Held::Bool, value);
}

inline void JsonValue::setInteger(std::int64_t value) {
    kind = JsonKind::Integer;
    holderFor(JsonKind::Integer).store(Held::Integer, value);
}

inline void JsonValue::setFloat(double value) {
    kind = JsonKind::Float;
    holderFor(JsonKind::Float).store(Held::Float, value);
}

inline void JsonValue::setString(std::string_view value) {
    kind = JsonKind::String;
    holderFor(JsonKind::String).putString(value);
}

inline std::string_view JsonValue::stringValue() const {
    const JsonValue& holder = holderOf(JsonKind::String);
    if (holder.held == Held::ShortString) {
        return {holder.bytes.data(), static_cast<unsigned char>(holder.bytes.back())};
    }
    return holder.held == Held::LongString ? std::string_view(*holder.load<std::string*>())
                                           : std::string_view();
}

// The value itself holds the only field that it ever had; of several each has a value of its own.
inline const JsonValue& JsonValue::holderOf(JsonKind field) const {
    return held == Held::Several ? (*load<Fields*>())[static_cast<std::size_t>(field)] : *this;
}

} // namespace dunkman
