#pragma once

#include "json5/canonical.h"
#include "json5/reader.h"

#include <string>
#include <string_view>

namespace dunkman::test {

// What reading a text gives: the value in canonical form, and the report.
struct Reading {
    std::string value;
    Json5Error code = Json5Error::None;
    std::string message;
    Json5Position position;
};

inline Reading readText(std::string_view text) {
    JsonValue value;
    Json5Report report;
    parseDocument(text, report, value);
    return {canonicalText(value), report.code, report.message, report.position};
}

// The value of a text that must be sound: read without fault, or ended right behind the value.
inline std::string valueOf(std::string_view text) {
    const Reading reading = readText(text);
    const bool sound = reading.code == Json5Error::None || reading.code == Json5Error::EndOfInput;
    return sound ? reading.value : "fault: " + reading.message;
}

} // namespace dunkman::test
