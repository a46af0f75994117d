#include "json5/data_file.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/fatal.h"
#include "json5/canonical.h"
#include "json5/reader.h"

namespace dunkman {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class DataFile : public testing::Test {
protected:
    DataFile() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        path = std::filesystem::temp_directory_path() / ("dunkman_data_" + std::to_string(now) + ".json5");
    }
    ~DataFile() override { std::filesystem::remove(path); }

    void store(const std::string& text) const { std::ofstream(path, std::ios::binary) << text; }

    std::string failureOf(const std::string& text) const {
        store(text);
        try {
            loadDataFile(path.string());
        } catch (const FatalError& error) {
            return error.what();
        }
        return "the game went on";
    }

    std::filesystem::path path;
};

TEST_F(DataFile, ThatIsMissingOrFaultyGivesWhatCouldBeRead) {
    EXPECT_EQ(canonicalText(loadDataFile(path.string())), "null");
    store("{a: 1, b: oops}");
    EXPECT_EQ(canonicalText(loadDataFile(path.string())), "{\"a\":1,\"b\":null}");
}

TEST_F(DataFile, ANumberOutOfRangeIsNamedWithItsPlaceAndItsKeys) {
    EXPECT_THAT(failureOf("{\n  zombie: {\n    health: 99999999999999999999,\n  }\n}"),
                AllOf(HasSubstr(path.string() + ":3:13: "), HasSubstr("99999999999999999999"),
                      HasSubstr("\"zombie.health\"")));
}

struct NumberCase {
    const char* text;
    const char* place;
    const char* literal;
};

TEST_F(DataFile, ANumberOutOfRangeIsFoundWhereverItStands) {
    for (const NumberCase& row :
         {NumberCase{"1e99999", ":1:1: ", "number 1e99999 "},
          NumberCase{" -1.5e99999", ":1:2: ", "number -1.5e99999 "},
          NumberCase{"[1,\n 2,\n+9223372036854775808]", ":3:1: ", "number +9223372036854775808 "},
          NumberCase{"[[{a: 1}], 1e-99999]", ":1:12: ", "number 1e-99999 "}}) {
        EXPECT_THAT(failureOf(row.text),
                    AllOf(HasSubstr(row.place), HasSubstr(row.literal), Not(HasSubstr("value of"))))
            << row.text;
    }
}

TEST_F(DataFile, OfAKeyGivenTwiceTheNumbersOwnPlaceIsNamed) {
    EXPECT_THAT(failureOf("{a: {x: 1}, b: 2, a: {y: 1e9999}}"),
                AllOf(HasSubstr(":1:26: "), HasSubstr("\"a.y\"")));
}

TEST_F(DataFile, AnEndlessNumberIsShortenedInTheMessage) {
    const std::string message = failureOf("{a: " + std::string(100000, '7') + "}");
    EXPECT_LT(message.size(), 400u);
    EXPECT_THAT(message, HasSubstr("7..."));
}

TEST_F(DataFile, LargerThanTheBoundIsRefusedWithItsName) {
    store("[]");
    std::filesystem::resize_file(path, std::uintmax_t{maxJson5Bytes} + 1);
    try {
        loadDataFile(path.string());
        FAIL() << "no message";
    } catch (const FatalError& error) {
        EXPECT_THAT(error.what(), AllOf(HasSubstr(path.string()), HasSubstr("64 MiB")));
    }
}

} // namespace
} // namespace dunkman
