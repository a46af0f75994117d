#include <cstdlib>
#include <ostream>

#include <gtest/gtest.h>

#include "app/reset.h"
#include "tests/tools/broken_example.h"
#include "tools/inspect/data_check.h"

// One fault each, and the one line that the check says of it.

namespace dunkman {

namespace {

// A shader compiler takes longer than everything else.
std::string faults(const std::string& shaderCompiler) {
    std::string out;
    for (const std::string& fault : inspect::checkData({shaderCompiler}).faults) {
        out += fault + '\n';
    }
    return out;
}

TEST(BrokenData, BeginsWithAGoodDirectory) {
    const GoodData data;
    EXPECT_EQ(faults(""), "");
}

TEST(BrokenData, HasManyExamples) { EXPECT_GE(brokenExamples().size(), 170u); }

class BrokenDataCheck : public testing::TestWithParam<BrokenExample> {};

TEST_P(BrokenDataCheck, SaysJustThisFault) {
    const BrokenExample& example = GetParam();
    if (!example.neededProgram.empty() &&
        std::system(
            (example.neededProgram + " --version > " + testing::TempDir() + "/version 2>&1").c_str()) != 0) {
        GTEST_SKIP() << example.neededProgram << " is not installed";
    }
    const GoodData data;
    breakData(example, data);
    EXPECT_EQ(faults(example.neededProgram), example.expected);
}

INSTANTIATE_TEST_SUITE_P(Examples, BrokenDataCheck, testing::ValuesIn(brokenExamples()),
                         [](const auto& example) { return example.param.name; });

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest looks for this name
void PrintTo(const BrokenExample& example, std::ostream* out) { *out << example.name; }

} // namespace dunkman
