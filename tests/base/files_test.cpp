#include "base/files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/fakes/scratch_folder.h"

namespace dunkman {

namespace {

class Files : public testing::Test {
protected:
    static bool put(const std::string& path, const std::string& text) {
        File file = File::toWrite(path);
        return file.isOpen() && file.write(text) && file.close();
    }

    static std::string textOf(const std::string& path) {
        const File file = File::toRead(path);
        std::array<char, 100> bytes{};
        const std::optional<std::size_t> count = file.isOpen() ? file.read(bytes) : std::nullopt;
        return count ? std::string(bytes.data(), *count) : "unreadable";
    }

    const ScratchFolder scratch; // the working directory
};

TEST_F(Files, HoldWhatWasWritten) {
    EXPECT_TRUE(put("file", std::string("a\0b\r\n", 5)));
    EXPECT_EQ(textOf("file"), std::string("a\0b\r\n", 5));
    EXPECT_EQ(statusOf("file").kind, FileKind::Ordinary);
    EXPECT_EQ(statusOf("file").size, 5u);
}

TEST_F(Files, AreEmptiedBeforeTheyAreWrittenAnew) {
    put("file", "a long text");
    put("file", "short");
    EXPECT_EQ(textOf("file"), "short");
}

TEST_F(Files, EndWithAReadOfNothing) {
    put("file", "");
    EXPECT_EQ(textOf("file"), "");
}

TEST_F(Files, HaveNamesOfAnyLanguage) {
    EXPECT_TRUE(put("Spiele f\xC3\xBCr den Strand \xF0\x9F\x8F\x96", "text"));
    EXPECT_EQ(textOf("Spiele f\xC3\xBCr den Strand \xF0\x9F\x8F\x96"), "text");
    EXPECT_FALSE(renameFile("Spiele f\xC3\xBCr den Strand \xF0\x9F\x8F\x96", "plain"));
    EXPECT_EQ(textOf("plain"), "text");
}

TEST_F(Files, TakeThePlaceOfOthers) {
    put("old", "old");
    put("new", "new");
    EXPECT_FALSE(renameFile("new", "old"));
    EXPECT_EQ(textOf("old"), "new");
    EXPECT_EQ(statusOf("new").kind, FileKind::None);
}

TEST_F(Files, ThatAreNotThereCannotBeReadOrRenamed) {
    EXPECT_FALSE(File::toRead("none").isOpen());
    EXPECT_EQ(statusOf("none").kind, FileKind::None);
    EXPECT_EQ(statusOf("").kind, FileKind::None);
    const std::error_code error = renameFile("none", "other");
    EXPECT_TRUE(error);
    EXPECT_FALSE(error.message().empty());
}

TEST_F(Files, CannotBeWrittenInAFolderThatIsNotThere) { EXPECT_FALSE(File::toWrite("none/file").isOpen()); }

TEST_F(Files, AreGoneWhenRemoved) {
    put("file", "");
    removeFile("file");
    removeFile("file");
    EXPECT_EQ(statusOf("file").kind, FileKind::None);
}

TEST_F(Files, CloseOnce) {
    File file = File::toWrite("file");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(file.close());
}

TEST_F(Files, LieInFolders) {
    scratch.write("folder/file", "text");
    EXPECT_EQ(statusOf("folder").kind, FileKind::Folder);
    EXPECT_EQ(textOf(pathIn("folder", "file")), "text");
    EXPECT_EQ(textOf(pathIn("folder/", "file")), "text");
    EXPECT_EQ(pathIn("", "file"), "file");
}

TEST_F(Files, AreLookedForInTheFolderThatWasEntered) {
    scratch.write("folder/file", "text");
    const std::string outside = workingFolder();
    EXPECT_FALSE(enterFolder("folder"));
    EXPECT_EQ(workingFolder(), pathIn(outside, "folder"));
    EXPECT_EQ(textOf("file"), "text");
    const std::error_code error = enterFolder("none");
    EXPECT_TRUE(error);
    EXPECT_FALSE(error.message().empty());
    EXPECT_FALSE(enterFolder(outside));
}

TEST_F(Files, HaveAFolderWhileNobodyNeedsThemForLong) {
    EXPECT_EQ(statusOf(temporaryFolder()).kind, FileKind::Folder);
}

} // namespace

} // namespace dunkman
