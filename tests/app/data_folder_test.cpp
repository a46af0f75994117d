#include "app/data_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/fatal.h"
#include "tests/fakes/scratch_folder.h"

namespace dunkman {

namespace {

using testing::HasSubstr;

constexpr const char* shader = "drawable_basic.frag";

// A working directory and, beside it, the folder of the program. Neither holds anything yet.
class DataFolder : public testing::Test {
protected:
    DataFolder() {
        std::filesystem::create_directories(work);
        std::filesystem::create_directories(program);
        std::filesystem::current_path(work);
    }

    // Where the game looks for its files in the end.
    std::filesystem::path entered() {
        enterDataFolder(program.string());
        return std::filesystem::current_path();
    }

    std::string fault(const std::filesystem::path& programFolder) {
        try {
            enterDataFolder(programFolder.string());
        } catch (const FatalError& error) {
            return error.what();
        }
        return "no fault";
    }

    ScratchFolder scratch;
    std::filesystem::path base = std::filesystem::current_path();
    std::filesystem::path work = base / "elsewhere";
    std::filesystem::path program = base / "its place";
};

TEST_F(DataFolder, IsTheWorkingDirectoryWhenThatHoldsGameData) {
    scratch.write("elsewhere/scene.json5", "");
    scratch.write("its place/scene.json5", "");
    EXPECT_EQ(entered(), work);
}

TEST_F(DataFolder, IsOtherwiseTheProgramsOwnFolder) {
    scratch.write("its place/scene.json5", "");
    scratch.write("its place/data/scene.json5", "");
    EXPECT_EQ(entered(), program);
}

TEST_F(DataFolder, IsOtherwiseTheFolderDataBesideTheProgram) {
    scratch.write("its place/data/scene.json5", "");
    EXPECT_EQ(entered(), program / "data");
}

TEST_F(DataFolder, IsFoundByAnyFileThatTheGameCannotDoWithout) {
    for (const char* name : {"images_compressed.json5", "recipes.json5", "prefabs.json5", "scene.json5",
                             "drawable_basic.vert", shader}) {
        scratch.write(std::string("one/") + name + "/" + name, "");
        EXPECT_TRUE(holdsGameData((base / "one" / name).string())) << name;
    }
}

TEST_F(DataFolder, IsNotFoundByWhatTheGameWritesItself) {
    scratch.write("elsewhere/recording.json5", "[]");
    EXPECT_FALSE(holdsGameData(work.string()));
}

TEST_F(DataFolder, IsNotFoundByAFolderWithTheNameOfAFile) {
    std::filesystem::create_directories(work / shader);
    EXPECT_FALSE(holdsGameData(work.string()));
}

TEST_F(DataFolder, IsMissedWithAMessageThatSaysWhereItWasLookedFor) {
    const std::string places =
        "\n" + work.string() + "\n" + program.string() + "\n" + (program / "data").string() + "\n";
    EXPECT_THAT(fault(program), HasSubstr(places));
    EXPECT_EQ(std::filesystem::current_path(), work);
}

TEST_F(DataFolder, IsLookedForOnceInAFolderThatIsBothPlaces) {
    const std::string places = "\n\n" + work.string() + "\n" + (work / "data").string() + "\n\n";
    EXPECT_THAT(fault(work), HasSubstr(places));
}

TEST_F(DataFolder, IsLookedForInTheWorkingDirectoryAloneWhenTheProgramHasNoFolder) {
    EXPECT_THAT(fault({}), HasSubstr("\n\n" + work.string() + "\n\n"));
}

} // namespace

} // namespace dunkman
