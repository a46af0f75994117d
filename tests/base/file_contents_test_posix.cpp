#include "base/file_contents.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/fatal.h"

namespace dunkman {

namespace {

// Opening it would wait for a writer who never comes.
TEST(Pipe, InPlaceOfADataFileIsRefusedUnopened) {
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("dunkman_pipe_" + std::to_string(getpid()));
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readFile(path, 1000).fault, FileFault::NotOrdinary);
    EXPECT_THROW(readDataFile(path.string(), 1000), FatalError);
    std::filesystem::remove(path);
}

} // namespace

} // namespace dunkman
