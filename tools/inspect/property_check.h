#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>

#include "tools/inspect/data_file.h"
#include "world/object_class.h"

namespace dunkman::inspect {

// Holds properties against the fields of the classes that they are for.
class PropertyCheck {
public:
    PropertyCheck(const DataFile& imageFile, Faults& faultList) : images(imageFile), faults(faultList) {}

    // `name` begins each fault. `besides` are keys that may stand there and are no properties. An object of any of the
    // types may be meant; with no type nothing is checked.
    void check(const std::string& name, const Located& properties, const std::set<ObjectType>& types,
               std::span<const std::string_view> besides);

    // A value that is read as a pair.
    void checkPair(const std::string& name, std::string_view key, const Located& value);

private:
    void checkValue(const std::string& name, const Field& field, const Located& value);
    void checkNumber(const std::string& name, std::string_view key, const FieldRange& range, bool isWhole,
                     const Located& number);
    void checkImage(const std::string& name, const Located& key);
    void reportKind(const std::string& name, std::string_view key, FieldKind wanted, const Located& value);

    const DataFile& images;
    Faults& faults;
};

} // namespace dunkman::inspect
