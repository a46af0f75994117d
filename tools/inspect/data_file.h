#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "json5/reader.h"
#include "tools/inspect/faults.h"
#include "tools/inspect/source_map.h"

namespace dunkman::inspect {

class Located;
struct LocatedMember;

// A data file as the game reads it, with the places of its values.
class DataFile {
public:
    // Reads the file and reports all that can be told of it alone: that it is missing, a syntax fault, a top level of
    // another kind than wanted, repeated keys, keys that a comment or white space got into, hexadecimal numbers.
    DataFile(std::string path, JsonKind wantedTop, Faults& faults);
    DataFile(const DataFile&) = delete; // its values are looked at from outside
    DataFile& operator=(const DataFile&) = delete;

    // Whether the value is what the file means. Nothing follows from one that is not: a syntax fault is one fault.
    bool isSound() const { return sound; }

    Located top() const;

    Spot spotAt(std::size_t offset) const;
    Spot wholeFile() const { return {path, 1, 1}; }

    std::string_view textFrom(std::size_t offset) const;

private:
    bool load(Faults& faults);
    bool parse(Faults& faults);
    void reportSyntax(const Json5Report& report, Faults& faults) const;
    bool hasOddKeys(const SourcePlace& place, Faults& faults) const;
    void reportOddities(Faults& faults) const;

    std::string path;
    std::string text;
    JsonValue value;
    SourceMap map;
    bool sound = false;
};

// A value of a data file, with its place there.
class Located {
public:
    Located(const DataFile& itsFile, const JsonValue& itsValue, const SourcePlace* itsPlace)
        : file(&itsFile), content(&itsValue), place(itsPlace) {}

    const JsonValue& value() const { return *content; }
    const JsonValue* operator->() const { return content; }

    // The members of an Object and the elements of an Array; none of another kind.
    std::vector<LocatedMember> members() const;
    std::vector<Located> elements() const;

    // The member of an Object; a Null in the same place when there is none.
    Located get(std::string_view key) const;

    Spot spot() const;

    // Whether it is not what it looks like, which has been told where the file was read: a hexadecimal number, or the mix
    // that a repeated key makes.
    bool isMisread() const;

private:
    friend struct LocatedMember;

    const DataFile* file;
    const JsonValue* content;
    const SourcePlace* place;
};

struct LocatedMember {
    std::string_view key;
    std::size_t keyOffset;
    Located value;

    Spot keySpot() const { return value.file->spotAt(keyOffset); }
};

} // namespace dunkman::inspect
