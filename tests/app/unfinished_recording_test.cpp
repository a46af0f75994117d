#include "app/unfinished_recording.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <new>
#include <string>

#include "base/fatal.h"
#include "base/key_states.h"
#include "tests/fakes/program_fixture.h"
#include "tests/fakes/temporary_folder.h"

namespace dunkman {

namespace {

using testing::AllOf;
using testing::HasSubstr;

namespace files = std::filesystem;

constexpr const char* beside = "recording-unfinished.json5";
constexpr const char* older = "recording-unfinished-older.json5";
constexpr const char* inTemporaryFolder = "temporary/dunkman-recording-unfinished.json5";

class UnfinishedRecording : public ProgramFixture, protected FrameObserver {
protected:
    // The whole program, straight into a game in which the hero walks to the right from the third step on;
    // `atEnd` is called before the sixth.
    std::string run(void (*atEnd)(), InputMode mode = InputMode::Record) {
        endGame = atEnd;
        frameObserver = this;
        try {
            runProgram(mode);
        } catch (const FatalError& fault) {
            return fault.what();
        } catch (const simulated::ProgramExit& end) {
            return "exit " + std::to_string(end.status);
        }
        return "no message";
    }

    void updated() override {
        ++steps;
        if (steps == 1) {
            switchTo(ScreenId::Game);
        } else if (steps == 3) {
            press(keys::d);
        } else if (steps == lastStep) {
            endGame();
        }
    }

    // What a press of D leaves behind.
    static std::string walk(std::uint64_t frame) {
        return "[\n  {\n    \"frame\": " + std::to_string(frame) +
               ", \n    \"newKeyStates\": [\n      {\n        \"key\": 68, \n        \"state\": 3\n      }\n "
               "   ]\n  }\n]";
    }

    static void blockWritingBeside() {
        files::create_directories("recording-unfinished.json5.new/in the way");
    }

    static std::string notice() {
        return simulated::machine.notices.size() == 1 ? simulated::machine.notices.front() : "no notice";
    }

    int steps = 0;
    int lastStep = 6;
    void (*endGame)() = nullptr;
    const TemporaryFolder temporaryFolder;
};

TEST_F(UnfinishedRecording, EscapeKeepsItBesideTheRecordingAndSaysSo) {
    data.write("recording.json5", "[]");
    EXPECT_EQ(run([] { press(keys::escape); }), "no message");
    EXPECT_EQ(data.read(beside), walk(2));
    EXPECT_EQ(data.read("recording.json5"), "[]");
    EXPECT_THAT(notice(), HasSubstr("recording-unfinished.json5"));
}

TEST_F(UnfinishedRecording, ClosingTheWindowKeepsIt) {
    run([] { simulated::machine.windowVisible = false; });
    EXPECT_EQ(data.read(beside), walk(2));
    EXPECT_THAT(notice(), HasSubstr("recording-unfinished.json5"));
}

TEST_F(UnfinishedRecording, AFaultInTheGameKeepsItAndItsMessageSaysSo) {
    EXPECT_THAT(run([] { fatal("The sky falls."); }),
                AllOf(HasSubstr("The sky falls."), HasSubstr("recording-unfinished.json5")));
    EXPECT_EQ(data.read(beside), walk(2));
    EXPECT_THAT(simulated::machine.notices, testing::IsEmpty()); // one box is enough
}

TEST_F(UnfinishedRecording, ALackOfMemoryKeepsItAndIsToldInWords) {
    EXPECT_THAT(run([] { throw std::bad_alloc(); }),
                AllOf(HasSubstr("not enough memory"), HasSubstr("recording-unfinished.json5")));
    EXPECT_EQ(data.read(beside), walk(2));
}

TEST_F(UnfinishedRecording, WhereNothingCanBeWrittenBesideItGoesToTheTemporaryFolder) {
    blockWritingBeside();
    run([] { press(keys::escape); });
    EXPECT_FALSE(files::exists(beside));
    EXPECT_EQ(data.read(inTemporaryFolder), walk(2));
    EXPECT_THAT(notice(), HasSubstr((temporaryFolder.path / "dunkman-recording-unfinished.json5").string()));
}

TEST_F(UnfinishedRecording, IsDeclaredLostOnlyWhenBothPlacesRefuseIt) {
    blockWritingBeside();
    files::remove_all(temporaryFolder.path);
    run([] { press(keys::escape); });
    EXPECT_THAT(notice(), AllOf(HasSubstr("is lost"), HasSubstr("dunkman-recording-unfinished.json5")));
}

TEST_F(UnfinishedRecording, AFinishedOneThatCannotBeSavedIsKeptToo) {
    files::create_directory("recording.json5.new");
    EXPECT_THAT(run([] { switchTo(ScreenId::Credits); }),
                AllOf(HasSubstr("recording.json5.new"), HasSubstr("recording-unfinished.json5")));
    EXPECT_EQ(data.read(beside), walk(2));
}

TEST_F(UnfinishedRecording, AFinishedOneLeavesOnlyTheRecording) {
    lastStep = 620; // some of it has been kept by then
    EXPECT_EQ(run([] { switchTo(ScreenId::Credits); }), "exit 0");
    EXPECT_EQ(data.read("recording.json5"), walk(2));
    EXPECT_FALSE(files::exists(beside));
}

TEST_F(UnfinishedRecording, ARecordingThatCannotTakeItsPlaceIsNotKeptTwice) {
    files::create_directories("recording.json5/in the way");
    EXPECT_THAT(run([] { switchTo(ScreenId::Credits); }),
                HasSubstr("The recording is in recording.json5.new"));
    EXPECT_EQ(data.read("recording.json5.new"), walk(2));
    EXPECT_FALSE(files::exists(beside));
}

TEST_F(UnfinishedRecording, NothingIsKeptOfAGameInWhichNoKeyChanged) {
    lastStep = 2;
    run([] { press(keys::escape); });
    EXPECT_FALSE(files::exists(beside));
    EXPECT_THAT(simulated::machine.notices, testing::IsEmpty());
}

TEST_F(UnfinishedRecording, OnlyARecordingIsKept) {
    run([] { press(keys::escape); }, InputMode::Live);
    EXPECT_FALSE(files::exists(beside));
    EXPECT_THAT(simulated::machine.notices, testing::IsEmpty());
}

TEST_F(UnfinishedRecording, AnOlderOneOfAnotherGameStays) {
    data.write(beside, "of another game");
    run([] { press(keys::escape); });
    EXPECT_EQ(data.read(beside), walk(2));
    EXPECT_EQ(data.read(older), "of another game");
}

TEST_F(UnfinishedRecording, IsOnTheDiskTenSecondsIntoTheGame) {
    lastStep = 620;
    static std::uintmax_t bytes = 0;
    run([] {
        bytes = files::file_size(beside);
        simulated::machine.windowVisible = false;
    });
    EXPECT_EQ(bytes, walk(2).size());
    EXPECT_FALSE(files::exists(older)); // it is still the same game
}

} // namespace

} // namespace dunkman
