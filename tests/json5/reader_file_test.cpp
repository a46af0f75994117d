#include "json5/canonical.h"
#include "json5/reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <istream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace dunkman {
namespace {

class Json5File : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        path = (std::filesystem::temp_directory_path() / (std::string("dunkman_json5_") + info->name()))
                   .string();
        std::filesystem::remove_all(path);
    }
    void TearDown() override { std::filesystem::remove_all(path); }

    void store(const std::string& text) const { std::ofstream(path, std::ios::binary) << text; }

    std::string path;
};

TEST_F(Json5File, MissingFileIsNullWithCode3) {
    Json5Report report;
    EXPECT_EQ(canonicalText(parseFile(path, report)), "null");
    EXPECT_EQ(report.code, Json5Error::StreamFailed);
    EXPECT_EQ(report.message, "");
    EXPECT_EQ(report.position.characters, 0u);
    EXPECT_EQ(canonicalText(parseFile(path)), "null");
}

TEST_F(Json5File, FolderIsNullWithCode3) {
    std::filesystem::create_directory(path);
    Json5Report report;
    EXPECT_EQ(canonicalText(parseFile(path, report)), "null");
    EXPECT_EQ(report.code, Json5Error::StreamFailed);
}

TEST_F(Json5File, EmptyFileIsNullWithCode5) {
    store("");
    Json5Report report;
    EXPECT_EQ(canonicalText(parseFile(path, report)), "null");
    EXPECT_EQ(report.code, Json5Error::EndOfInput);
}

TEST_F(Json5File, IsReadWholeAndByteForByte) {
    std::string text = "{a: [";
    std::string expected = "{\"a\":[";
    for (int number = 0; number < 50000; ++number) {
        const std::string digits = std::to_string(number);
        text += digits;
        text += ",\r\n";
        expected += number == 0 ? "" : ",";
        expected += digits;
    }
    store(text + "], b: '\x1a\xff'}\n");
    Json5Report report;
    EXPECT_EQ(canonicalText(parseFile(path, report)), expected + R"(],"b":"\x1a\xff"})");
    EXPECT_EQ(report.code, Json5Error::None);
    EXPECT_EQ(report.position.line, 50001u);
}

TEST_F(Json5File, FaultyFileGivesWhatWasBuilt) {
    store("{a:1, b:[2, oops], c:3}");
    EXPECT_EQ(canonicalText(parseFile(path)), R"({"a":1,"b":[2,null]})");
}

TEST_F(Json5File, NumberOutOfRangeLeavesAsAnException) {
    store("[1, 9223372036854775808]");
    EXPECT_THROW(parseFile(path), std::out_of_range);
}

TEST(Json5Stream, IsReadToItsEnd) {
    std::istringstream stream("[1, 2]");
    Json5Report report;
    JsonValue value;
    parseDocument(stream, report, value);
    EXPECT_EQ(canonicalText(value), "[1,2]");
    EXPECT_EQ(report.code, Json5Error::EndOfInput);
}

// Delivers its text and then breaks.
class BreakingBuffer : public std::streambuf {
public:
    explicit BreakingBuffer(std::string content) : text(std::move(content)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("the disk is gone"); }

private:
    std::string text;
};

TEST(Json5Stream, BreakingStreamHasCode3) {
    BreakingBuffer buffer("[1, 2");
    std::istream stream(&buffer);
    Json5Report report;
    JsonValue value;
    parseDocument(stream, report, value);
    EXPECT_EQ(report.code, Json5Error::StreamFailed);
    EXPECT_EQ(canonicalText(value), "[1,2]"); // what came before the fault counts
}

TEST(Json5Stream, ReportIsNewForEveryDocument) {
    Json5Report report;
    JsonValue value;
    parseDocument(std::string_view("[1 2]"), report, value);
    ASSERT_EQ(report.code, Json5Error::Syntax);
    parseDocument(std::string_view("3 "), report, value);
    EXPECT_EQ(report.code, Json5Error::None);
    EXPECT_EQ(report.message, "");
    EXPECT_EQ(canonicalText(value), "3");
}

} // namespace
} // namespace dunkman
