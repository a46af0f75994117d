#include "base/file_contents.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

#include "base/fatal.h"

namespace dunkman {

namespace {

using testing::AllOf;
using testing::HasSubstr;

class FileContentsTest : public testing::Test {
protected:
    FileContentsTest() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        folder = std::filesystem::temp_directory_path() / ("dunkman_files_" + std::to_string(now));
        std::filesystem::create_directories(folder);
        path = folder / "file";
    }
    ~FileContentsTest() override { std::filesystem::remove_all(folder); }

    void store(const std::string& bytes) const { std::ofstream(path, std::ios::binary) << bytes; }

    std::string failure(std::uintmax_t mostBytes) const {
        try {
            readDataFile(path.string(), mostBytes);
        } catch (const FatalError& error) {
            return error.what();
        }
        return "the game went on";
    }

    std::filesystem::path folder;
    std::filesystem::path path;
};

TEST_F(FileContentsTest, AreTheWholeFileByteForByte) {
    for (const std::size_t size : {0u, 1u, 65535u, 65536u, 65537u, 300000u}) {
        std::string bytes;
        for (std::size_t i = 0; i < size; ++i) {
            bytes += static_cast<char>(i * i % 251);
        }
        store(bytes);
        const FileContents contents = readFile(path.string(), 300000);
        EXPECT_EQ(contents.fault, FileFault::None) << size;
        EXPECT_EQ(contents.bytes.text(), bytes) << size;
    }
}

TEST_F(FileContentsTest, OfAMissingFileAndOfAFolderAreUnreadable) {
    EXPECT_EQ(readFile(path.string(), 10).fault, FileFault::Unreadable);
    EXPECT_EQ(readFile("", 10).fault, FileFault::Unreadable);
    EXPECT_EQ(readFile(folder.string(), 10).fault, FileFault::Unreadable);
    EXPECT_EQ(readDataFile(path.string(), 10).fault, FileFault::Unreadable);
}

TEST_F(FileContentsTest, BeyondTheBoundAreNotReadAtAll) {
    store("12345678");
    EXPECT_EQ(readFile(path.string(), 8).bytes.text(), "12345678");
    EXPECT_EQ(readFile(path.string(), 7).fault, FileFault::TooLarge);
    EXPECT_EQ(readFile(path.string(), 7).bytes.text(), "");
}

TEST_F(FileContentsTest, OfAHugeFileAreRefusedWithItsName) {
    store("");
    std::filesystem::resize_file(path, (std::uintmax_t{64} << 20) + 1);
    EXPECT_THAT(failure(std::uintmax_t{64} << 20), AllOf(HasSubstr(path.string()), HasSubstr("64 MiB")));
}

TEST(Fatal, ALackOfMemoryIsToldWithTheFile) {
    try {
        namingFile("recipes.json5", []() -> int { throw std::bad_alloc(); });
        FAIL() << "no message";
    } catch (const FatalError& fault) {
        EXPECT_THAT(fault.what(), AllOf(HasSubstr("memory"), HasSubstr("\"recipes.json5\"")));
    }
}

TEST(Fatal, APlaceIsAddedToTheMessage) {
    try {
        namingPlace([] { return "It is in the first entry."; }, [] { fatal("It is wrong."); });
        FAIL() << "no message";
    } catch (const FatalError& fault) {
        EXPECT_STREQ(fault.what(), "It is wrong. It is in the first entry.");
    }
}

TEST(Fatal, NoMessageIsTheLibrarysOwnWordAlone) {
    EXPECT_EQ(faultMessage(FatalError("It is wrong.")), "It is wrong.");
    EXPECT_THAT(faultMessage(std::bad_alloc()), HasSubstr("not enough memory"));
    EXPECT_THAT(faultMessage(std::out_of_range("map::at")),
                AllOf(HasSubstr("map::at"), HasSubstr("ended the program")));
}

} // namespace

} // namespace dunkman
