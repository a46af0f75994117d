#include "json5/canonical.h"
#include "json5/reader.h"
#include "json5/writer.h"

#include "tests/json5/round_trip.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

// Reads any bytes. What was read without fault is written, read and written again, and the two texts must match
// wherever the dialect can express the value.

namespace {

using namespace dunkman;

bool isSound(const Json5Report& report) {
    return report.code == Json5Error::None || report.code == Json5Error::EndOfInput;
}

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "json5_fuzz: %s\n", what);
        std::abort();
    }
}

void checkReport(const Json5Report& report, std::string_view text) {
    std::uint64_t lines = 0;
    for (const char byte : text) {
        lines += byte == '\n' ? 1 : 0;
    }
    require(report.position.characters <= text.size(), "more characters counted than there are");
    require(report.position.line <= lines, "more lines counted than there are");
    require(report.position.column <= report.position.characters, "a column beyond the characters read");
    require(isSound(report) ? report.message.empty() : true, "a message without a fault");
}

void checkRoundTrip(const JsonValue& value, std::string_view unit) {
    std::string first;
    writeJson5(value, first, unit);
    JsonValue again;
    Json5Report report;
    parseDocument(first, report, again);
    if (!test::readsBack(value)) {
        return;
    }
    require(isSound(report), "a written text has a fault");
    std::string second;
    writeJson5(again, second, unit);
    require(first == second, "a written text changed when it was read and written again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    JsonValue value;
    Json5Report report;
    try {
        parseDocument(text, report, value);
        checkReport(report, text);
        require(canonicalText(value) == canonicalText(JsonValue(value)), "a copy differs");
        if (isSound(report)) {
            checkRoundTrip(value, "");
            checkRoundTrip(value, "  ");
        }
    } catch (const std::out_of_range&) {
        // A number that does not fit.
    }
    return 0;
}
