#include "base/file_contents.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "base/fatal.h"

namespace dunkman {

namespace {

// Opening it would wait for a writer who never comes.
TEST(Pipe, InPlaceOfADataFileIsRefusedUnopened) {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("dunkman_pipe_" + std::to_string(getpid()));
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readFile(path.string(), 1000).fault, FileFault::NotOrdinary);
    EXPECT_THROW(readDataFile(path.string(), 1000), FatalError);
    std::filesystem::remove(path);
}

TEST(Device, ThatNeverEndsIsRefused) {
    EXPECT_EQ(readFile("/dev/zero", 1000).fault, FileFault::NotOrdinary);
    try {
        readDataFile("/dev/zero", 1000);
        FAIL() << "no message";
    } catch (const FatalError& fault) {
        EXPECT_NE(std::string(fault.what()).find("\"/dev/zero\" is a pipe or a device"), std::string::npos);
    }
}

// One that says it is empty, and goes on.
TEST(FileThatHoldsMoreThanItSays, IsReadToItsEndOrToTheBound) {
    const FileContents contents = readFile("/proc/self/status", 100000);
    EXPECT_NE(contents.bytes.text().find("voluntary_ctxt_switches"), std::string::npos);
    EXPECT_EQ(readFile("/proc/self/status", 20).fault, FileFault::TooLarge);
}

} // namespace

} // namespace dunkman
