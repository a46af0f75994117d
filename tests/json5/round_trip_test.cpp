#include "tests/json5/round_trip.h"

#include "json5/canonical.h"
#include "json5/reader.h"
#include "json5/writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace dunkman {
namespace {

using Random = std::mt19937_64;

std::string randomBytes(Random& random) {
    std::string bytes;
    for (std::size_t count = random() % 12; count > 0; --count) {
        char byte = static_cast<char>(static_cast<unsigned char>(random() % 256));
        if (byte == '"' || byte == '\\' || byte == '\r' || byte == '\n') {
            byte = '\'';
        }
        bytes += byte;
    }
    return bytes;
}

JsonValue randomValue(Random& random, int depth) {
    switch (random() % (depth > 5 ? 5 : 7)) {
    case 0:
        return JsonValue();
    case 1:
        return JsonValue::makeBool(random() % 2 == 0);
    case 2:
        return JsonValue::makeInteger(static_cast<std::int64_t>(random() >> (random() % 64)));
    case 3: // short enough for the writer's six digits
        return JsonValue::makeFloat(static_cast<double>(static_cast<int>(random() % 200000) - 100000) / 64.0 /
                                    8.0);
    case 4:
        return JsonValue::makeString(randomBytes(random));
    case 5: {
        JsonValue value = JsonValue::makeArray();
        for (std::size_t count = random() % 6; count > 0; --count) {
            value.append() = randomValue(random, depth + 1);
        }
        return value;
    }
    default: {
        JsonValue value = JsonValue::makeObject();
        for (std::size_t count = random() % 14; count > 0; --count) {
            value.member(randomBytes(random)) = randomValue(random, depth + 1);
        }
        return value;
    }
    }
}

JsonValue parse(std::string_view text, Json5Report& report) {
    JsonValue value;
    parseDocument(text, report, value);
    return value;
}

TEST(Json5RoundTrip, WrittenTextReadsBackAndIsWrittenTheSame) {
    Random random(1);
    int compared = 0;
    for (int round = 0; round < 3000; ++round) {
        const JsonValue value = randomValue(random, 0);
        const std::string unit(random() % 5, ' ');
        std::string first;
        writeJson5(value, first, unit);
        Json5Report report;
        const JsonValue again = parse(first, report);
        if (!test::readsBack(value)) {
            continue;
        }
        ++compared;
        ASSERT_EQ(report.code, Json5Error::EndOfInput) << report.message << "\n" << first;
        std::string second;
        writeJson5(again, second, unit);
        ASSERT_EQ(second, first);
    }
    EXPECT_GT(compared, 2000);
}

TEST(Json5RoundTrip, ValuesWithShortFloatsComeBackExactly) {
    Random random(2);
    for (int round = 0; round < 3000; ++round) {
        JsonValue value = randomValue(random, 4);
        std::string text;
        writeJson5(value, text, "  ");
        Json5Report report;
        const JsonValue once = parse(text, report);
        std::string textAgain;
        writeJson5(once, textAgain, "  ");
        if (test::readsBack(once)) {
            EXPECT_EQ(canonicalText(parse(textAgain, report)), canonicalText(once));
        }
    }
}

// Texts made of the dialect's own pieces: whatever they are, the reader comes to an end and its value can be printed.
TEST(Json5RoundTrip, RandomTextsNeverBreakTheReader) {
    const std::vector<std::string> pieces = {
        "{", "}",  "[",  "]",  ":",   ",",  "\"",   "'",     "\\",   "\\x41", "\\u0041",  "\\\n", "\\\r\n",
        " ", "\n", "\t", "\r", "/",   "//", "/*",   "*/",    "-",    "+",     ".",        "e",    "E",
        "0", "0x", "1",  "12", "9.5", "a",  "true", "false", "null", "NaN",   "Infinity", "\x80", "a:1,"};
    Random random(3);
    for (int round = 0; round < 100000; ++round) {
        std::string text;
        for (std::size_t count = random() % 20; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    }
}

TEST(Json5RoundTrip, FuzzCorpusRunsThrough) {
    const std::filesystem::path folder = "tests/fuzz/corpus/json5";
    ASSERT_TRUE(std::filesystem::is_directory(folder)) << "run from the project's root folder";
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        ++files;
    }
    EXPECT_GE(files, 20);
}

} // namespace
} // namespace dunkman
