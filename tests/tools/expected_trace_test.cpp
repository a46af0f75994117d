#include "tools/headless/expected_trace.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tools/headless/options.h"

namespace dunkman::headless {
namespace {

class ExpectedTraces : public testing::Test {
protected:
    ExpectedTraces() : path(std::filesystem::temp_directory_path() / "dunkman_expected_trace.txt") {}
    ~ExpectedTraces() override { std::filesystem::remove(path); }

    // What a run that printed `actual` is told where `expected` is stored.
    std::string difference(const std::string& expected, const std::string& actual) {
        std::ofstream(path, std::ios::binary) << expected;
        ExpectedTrace trace(path.string());
        try {
            trace.compare(actual);
            trace.finish();
        } catch (const TraceDiffers& error) {
            return error.what();
        }
        return "none";
    }

    std::filesystem::path path;
};

TEST_F(ExpectedTraces, AreMetByTheSameText) {
    EXPECT_EQ(difference("step 0 time=0x1p-1\nend iterations=1\n", "step 0 time=0x1p-1\nend iterations=1\n"),
              "none");
}

TEST_F(ExpectedTraces, TakeTheTraceInPiecesOfAnySize) {
    std::ofstream(path, std::ios::binary) << "step 0\nstep 1\n";
    ExpectedTrace trace(path.string());
    for (const char* piece : {"st", "ep 0\ns", "tep 1", "\n"}) {
        trace.compare(piece);
    }
    EXPECT_NO_THROW(trace.finish());
}

TEST_F(ExpectedTraces, NameStepObjectFieldAndBothValues) {
    const std::string before = "step 7 time=0x1p+0\nobject Zombie x=0x0p+0 y=0x0p+0\n";
    EXPECT_EQ(difference(before + "object Zombie x=0x1p+0 y=0x1p+1\n",
                         before + "object Zombie x=0x1p+0 y=0x1p+2\n"),
              "step 7, object Zombie 1: y: expected 0x1p+1, found 0x1p+2");
}

TEST_F(ExpectedTraces, NameAFieldOfTheStepItself) {
    EXPECT_EQ(difference("step 3 time=0x1p+0 screen=Game\n", "step 3 time=0x1p+0 screen=GameOver\n"),
              "step 3: screen: expected Game, found GameOver");
}

TEST_F(ExpectedTraces, NameAKeyAndItsTwoStates) {
    EXPECT_EQ(difference("step 0\nkey 0x57 3\n", "step 0\nkey 0x57 1\n"),
              "step 0, key 0x57 0: expected 3, found 1");
}

TEST_F(ExpectedTraces, NameTheNumberOfAViewThatDiffers) {
    EXPECT_EQ(difference("step 0\nview 0x1p+0,0x0p+0,0x1p+1\n", "step 0\nview 0x1p+0,0x0p+0,0x1p+2\n"),
              "step 0, view 0: number 2: expected 0x1p+1, found 0x1p+2");
}

TEST_F(ExpectedTraces, CountTheDrawsOfAStepAnew) {
    EXPECT_EQ(difference("step 0\ndraw image=a z=1\nstep 1\ndraw image=a z=1\ndraw image=b z=1\n",
                         "step 0\ndraw image=a z=1\nstep 1\ndraw image=a z=1\ndraw image=c z=1\n"),
              "step 1, draw 1: image: expected b, found c");
}

TEST_F(ExpectedTraces, ShowBothLinesWhereTheyAreAboutOtherThings) {
    EXPECT_EQ(difference("step 0\nobject Player x=1\n", "step 0\nobject Camera x=1\n"),
              "step 0, object Camera 0: expected \"object Player x=1\", found \"object Camera x=1\"");
}

TEST_F(ExpectedTraces, EndWithTheRunAndNotBefore) {
    EXPECT_EQ(difference("step 0\n", "step 0\nend iterations=1\n"),
              "step 0: " + path.string() + " ends here, found \"end iterations=1\"");
    EXPECT_EQ(difference("step 0\nstep 1\n", "step 0\n"), "step 0: the run is over, expected \"step 1\"");
}

TEST_F(ExpectedTraces, ThatCannotBeReadAreAWrongArgument) {
    EXPECT_THROW(ExpectedTrace((path / "nowhere").string()), UsageError);
}

} // namespace
} // namespace dunkman::headless
