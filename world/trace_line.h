#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dunkman {

class Object;

// A line of a trace in the making: " NAME=VALUE" for each field. Doubles print as hexadecimal floats, whole numbers
// in decimal, flags as 0 or 1.
class TraceLine {
public:
    explicit TraceLine(std::string& text) : out(text) {}

    void add(std::string_view name, double value);
    void add(std::string_view name, bool value);
    void add(std::string_view name, std::int32_t value);
    void add(std::string_view name, std::size_t value);
    void add(std::string_view name, std::string_view value);
    void add(std::string_view name, const char* value) = delete; // it would count as a flag

private:
    void begin(std::string_view name);

    std::string& out;
};

// The name of the object's class; "none" for null.
std::string_view typeNameOf(const Object* object);

} // namespace dunkman
