#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Runs the fuzz entry that this program is linked with over its corpus: past finds stay found.
TEST(FuzzCorpus, IsTakenWithoutACrash) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(DUNKMAN_CORPUS)) {
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()),
                  0);
        ++files;
    }
    EXPECT_GE(files, 5);
}
