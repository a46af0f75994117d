#include "tests/json5/plain_reader.h"

#include "tests/json5/read_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace dunkman {
namespace {

std::string describe(const Json5Report& report, const JsonValue& value) {
    std::string text = std::to_string(static_cast<unsigned>(report.code));
    text += " " + canonicalString(report.message);
    for (const std::uint64_t counter : {report.position.characters, report.position.line,
                                        report.position.column, report.position.previousLineLength}) {
        text += " " + std::to_string(counter);
    }
    return text + " " + canonicalText(value);
}

using Parser = void (*)(const std::string& text, Json5Report& report, JsonValue& value);

std::string outcomeOf(Parser parser, const std::string& text) {
    JsonValue value;
    Json5Report report;
    try {
        parser(text, report, value);
    } catch (const std::out_of_range&) {
        return "out of range";
    }
    return describe(report, value);
}

void parseReally(const std::string& text, Json5Report& report, JsonValue& value) {
    parseDocument(std::string_view(text), report, value);
}

class Json5PlainReader : public ::testing::Test {
protected:
    void SetUp() override {
        if (std::numeric_limits<long double>::digits != 64) {
            GTEST_SKIP() << "long double has another size here";
        }
    }

    // Mostly sound text with a mistake here and there.
    std::string randomText(int depth) {
        if (random() % 40 == 0) {
            return pick(mistakes);
        }
        std::string text = space();
        switch (random() % (depth > 4 ? 3 : 5)) {
        case 0:
            text += pick(scalars);
            break;
        case 1:
            text += pick(numbers);
            break;
        case 2:
            text += pick(strings);
            break;
        case 3:
            text += '[';
            for (std::size_t count = random() % 4; count > 0; --count) {
                text += randomText(depth + 1);
                text += count > 1 || random() % 3 == 0 ? "," : "";
            }
            text += space();
            text += ']';
            break;
        default:
            text += '{';
            for (std::size_t count = random() % 4; count > 0; --count) {
                text += space();
                text += pick(keys);
                text += ':';
                text += randomText(depth + 1);
                text += count > 1 || random() % 3 == 0 ? "," : "";
            }
            text += space();
            text += '}';
            break;
        }
        return text + space();
    }

    std::string space() { return random() % 2 == 0 ? "" : pick(spaces); }

    const std::string& pick(const std::vector<std::string>& choices) {
        return choices[random() % choices.size()];
    }

    std::mt19937_64 random{99};
    const std::vector<std::string> scalars = {"true",     "false",     "null",     "NaN",
                                              "Infinity", "-Infinity", "+Infinity"};
    const std::vector<std::string> numbers = {"0",       "-0",
                                              "12",      "+7",
                                              "1.5",     ".5",
                                              "5.",      "1e5",
                                              "1.e-3",   "0.002877",
                                              "0x1F",    "-0X0a",
                                              "1e+2",    "0.0",
                                              "123e-70", "0.1000001",
                                              "1e4931",  "9223372036854775807",
                                              "1e999",   "-1e-999",
                                              "1e9999",  "92233720368547758070"};
    const std::vector<std::string> strings = {"'a'",           "\"b\"",      "'it\\'s'",  "'\\x41b'",
                                              "\"\\x41\\\"\"", "'\\\nb'",    "'\\\r\nb'", "'\\\rb'",
                                              "'\\n\\\\'",     "'\xc3\xa4'", "\"a'b\"",   "''"};
    const std::vector<std::string> keys = {"a",   "b ",          "\"a\"", "\"\"", "'a'",
                                           "a b", "\"\\x41\"\"", "c\n",   ""};
    const std::vector<std::string> spaces = {" ",      "\n",     "\t \r\n", "/*c*/",
                                             " /***/", "// x\n", " // y\r", "\n\n"};
    const std::vector<std::string> mistakes = {"tru",  "nulx",        "-",      "1e",      "0x",    "0xg1",
                                               "'a",   "\"\\u0041\"", "'\\xg'", "/",       "]",     "}",
                                               ",",    "\\",          "Na",     "Infinit", "a\\n:", "1 2",
                                               "'\n'", "1.e.",        "fals",   "\\u12",   "[[",    "{a"};
};

TEST_F(Json5PlainReader, AgreesOnRandomTexts) {
    for (int round = 0; round < 60000; ++round) {
        const std::string text = randomText(0);
        ASSERT_EQ(outcomeOf(parseReally, text), outcomeOf(test::parsePlainly, text)) << text;
    }
}

// Every beginning of a sound text, and every text with one character changed.
TEST_F(Json5PlainReader, AgreesOnTextsCutShortOrChanged) {
    const std::string characters = "{}[]:,\"'\\/*\n\r x0.1e-+uNInt\xff";
    for (int round = 0; round < 1500; ++round) {
        const std::string text = randomText(1);
        for (std::size_t length = 0; length <= text.size(); ++length) {
            const std::string cut = text.substr(0, length);
            ASSERT_EQ(outcomeOf(parseReally, cut), outcomeOf(test::parsePlainly, cut)) << cut;
            std::string changed = text;
            changed[length == text.size() ? 0 : length] = characters[random() % characters.size()];
            ASSERT_EQ(outcomeOf(parseReally, changed), outcomeOf(test::parsePlainly, changed)) << changed;
        }
    }
}

TEST_F(Json5PlainReader, AgreesOnTheFuzzCorpus) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("tests/fuzz/corpus/json5")) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        EXPECT_EQ(outcomeOf(parseReally, text), outcomeOf(test::parsePlainly, text)) << entry.path();
        ++files;
    }
    EXPECT_GE(files, 20);
}

} // namespace
} // namespace dunkman
