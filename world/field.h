#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "json5/value.h"
#include "world/properties.h"
#include "world/timer.h"

namespace dunkman {

class Object;

// What a field holds, and with that which values of a data file set it; any other value is passed over.
enum class FieldKind {
    Number,      // an Integer or a Float
    WholeNumber, // an Integer
    Flag,        // a Bool
    Text,        // a String
    Pair,        // a number, which counts for both, or an Array of two numbers
    Timer        // a number: the duration in seconds
};

// What somebody who fills a field with numbers can mean by them, both numbers of a pair alike. Reading takes any number; the
// inspector, the reference and the schemas tell of one outside.
struct FieldRange {
    double least;
    double most;
    bool isAboveLeast = false; // the least itself is outside

    constexpr bool contains(double number) const {
        return (isAboveLeast ? number > least : number >= least) && number <= most;
    }
};

inline constexpr double largestSensible = 1e6; // of anything; a beach is a hundred units long
inline constexpr FieldRange anySensible = {-largestSensible, largestSensible};
inline constexpr FieldRange notNegative = {0.0, largestSensible};
inline constexpr FieldRange positive = {0.0, largestSensible, true};

// A field of a class that data files may set. Each class lists its own once, at the top of its source; reading,
// writing, the inspector and the reference of the data files come from that list. The default is what the class's
// constructor leaves in the member.
struct Field {
    std::string_view key;
    FieldKind kind;
    std::string_view meaning; // one line, with the unit
    void (*read)(Object& object,
                 const JsonValue& value); // leaves the member when the value is of another kind
    JsonValue (*write)(const Object& object);
    FieldRange range;
};

constexpr FieldKind fieldKindOf(const double*) { return FieldKind::Number; }
constexpr FieldKind fieldKindOf(const std::int32_t*) { return FieldKind::WholeNumber; }
constexpr FieldKind fieldKindOf(const bool*) { return FieldKind::Flag; }
constexpr FieldKind fieldKindOf(const std::string*) { return FieldKind::Text; }
constexpr FieldKind fieldKindOf(const Vec2*) { return FieldKind::Pair; }
constexpr FieldKind fieldKindOf(const Timer*) { return FieldKind::Timer; }

template <auto Member> struct FieldOf;

template <class Kind, class Value, Value Kind::*Member> struct FieldOf<Member> {
    static constexpr FieldKind kind = fieldKindOf(static_cast<const Value*>(nullptr));

    static void read(Object& object, const JsonValue& value) {
        readProperty(value, static_cast<Kind&>(object).*Member);
    }

    static JsonValue write(const Object& object) {
        return writtenProperty(static_cast<const Kind&>(object).*Member);
    }
};

// The kind comes from the member's type.
template <auto Member>
constexpr Field field(std::string_view key, std::string_view meaning, FieldRange range = anySensible) {
    using Of = FieldOf<Member>;
    return {key, Of::kind, meaning, &Of::read, &Of::write, range};
}

} // namespace dunkman
