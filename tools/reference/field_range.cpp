#include "tools/reference/field_range.h"

#include "tools/reference/class_defaults.h"

namespace dunkman::reference {

std::string rangeText(const FieldRange& range) {
    const std::string least = plainText(JsonValue::makeFloat(range.least));
    if (range.most < largestSensible) {
        const std::string most = plainText(JsonValue::makeFloat(range.most));
        return range.isAboveLeast ? "above " + least + ", up to " + most : least + " to " + most;
    }
    if (range.least <= -largestSensible) {
        return {};
    }
    return range.isAboveLeast ? "above " + least : least + " or more";
}

} // namespace dunkman::reference
