#include "world/trace_line.h"

#include "json5/canonical.h"
#include "world/object.h"

namespace dunkman {

void TraceLine::add(std::string_view name, double value) {
    begin(name);
    appendHexFloat(out, value);
}

void TraceLine::add(std::string_view name, bool value) {
    begin(name);
    out += value ? '1' : '0';
}

void TraceLine::add(std::string_view name, std::int32_t value) {
    begin(name);
    out += std::to_string(value);
}

void TraceLine::add(std::string_view name, std::size_t value) {
    begin(name);
    out += std::to_string(value);
}

void TraceLine::add(std::string_view name, std::string_view value) {
    begin(name);
    out += value;
}

void TraceLine::begin(std::string_view name) {
    out += ' ';
    out += name;
    out += '=';
}

std::string_view typeNameOf(const Object* object) {
    return object != nullptr ? typeName(object->getType()) : std::string_view("none");
}

} // namespace dunkman
