#include <gmock/gmock.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "app/lifecycle.h"
#include "app/reset.h"
#include "base/fatal.h"
#include "base/key_states.h"
#include "platform/simulated/gl_sim.h"
#include "platform/simulated/platform_sim.h"
#include "render/gl_loader.h"
#include "screens/screen.h"
#include "tests/fakes/program_fixture.h"
#include "tests/fakes/temporary_folder.h"
#include "tests/faults/faulty_calls.h"
#include "world/trace.h"

// Every call to the system that a short recorded game makes, from start-up to what it keeps at the end, fails once, one
// game each. Each game must end as the undisturbed one did, or with a message that says what is wrong.
namespace dunkman {

namespace {

constexpr int lastStep = 40;
constexpr const char* beside = "recording-unfinished.json5";
constexpr const char* elsewhere = "temporary/dunkman-recording-unfinished.json5";

class Faults : public ProgramFixture, protected FrameObserver {
protected:
    Faults() {
        data.write(
            "recipes.json5",
            R"({"hero": {"_type": "Player"}, "camera": {"_type": "Camera"}, "flamingo": {"_type": "Flamingo"},
                       "pineapple": {"_type": "Pineapple"}, "arena": {"_type": "Arena", "zombieTimer": 0.1},
                       "zombie": {"_type": "Zombie", "size": 2.0}})");
        data.write("prefabs.json5",
                   R"({"fruit": [{"recipe": "pineapple", "tag": "one"}, {"recipe": "pineapple"}]})");
        data.write("scene.json5",
                   R"([{"recipe": "hero"}, {"recipe": "camera"}, {"recipe": "flamingo", "position": [0, 0.8]},
                       {"recipe": "arena", "position": [-1, 0]},
                       {"prefab": "fruit", "offset": [3, 0], "overrides": {"one": {"imageKey": "flamingo"}}}])");
    }

    struct Ending {
        std::string message; // empty: Escape, as it should be
        std::string world;   // as the last step left it
        std::vector<std::string> notices;
        std::string kept; // the recording, wherever it is
    };

    Ending playOnce(SystemCall failing, std::int64_t number) {
        resetProgram();
        std::filesystem::remove(beside);
        std::filesystem::remove(elsewhere);
        frameObserver = this;
        steps = 0;
        lastWorld.clear();
        Ending ending;
        beginCounting(failing, number);
        try {
            runProgram(InputMode::Record);
        } catch (const FatalError& fault) {
            counts = endCounting();
            ending.message = fault.what();
        } catch (const std::exception& fault) {
            counts = endCounting();
            ending.message = std::string("NOT FATAL: ") + fault.what();
        }
        counts = endCounting();
        ending.world = lastWorld;
        ending.notices = simulated::machine.notices;
        debugLines.insert(simulated::machine.debugLines.begin(), simulated::machine.debugLines.end());
        for (const char* path : {beside, elsewhere}) {
            if (std::filesystem::exists(path)) {
                ending.kept = data.read(path);
            }
        }
        return ending;
    }

    void updated() override {
        ++steps;
        if (steps == 1) {
            switchTo(ScreenId::Game);
        } else if (steps == 3 || steps == 20) {
            press(steps == 3 ? keys::z : keys::x);
        } else if (steps == 10) {
            letGo(keys::z);
        } else if (steps == lastStep) {
            lastWorld.reserve(100000); // the test's own calls are counted like any other: few of them
            appendWorldTrace(lastWorld);
            press(keys::escape);
        }
    }

    // What may be told without naming a file or an entry: nothing but a lack of memory.
    static bool isSound(const std::string& message) {
        for (const char* word : {".json5", ".dds", ".vert", ".frag", ".glsl", "memory"}) {
            if (message.find(word) != std::string::npos) {
                return message.find("bad_alloc") == std::string::npos && message.find("NOT FATAL") != 0;
            }
        }
        return false;
    }

    struct Tally {
        std::int64_t tried = 0;
        std::int64_t unnoticed = 0; // ended as if nothing had been
        std::int64_t told = 0;      // ended with a message
        std::int64_t silent = 0;    // played on with less, as with a file that is not there
    };

    Tally failEach(SystemCall call) {
        const Ending whole = playOnce(call, 0);
        EXPECT_EQ(whole.message, "");
        EXPECT_EQ(whole.notices.size(), 1u);
        EXPECT_FALSE(whole.kept.empty());
        const std::int64_t calls = counts[static_cast<std::size_t>(call)];
        Tally tally;
        for (std::int64_t number = 1; number <= calls; ++number) {
            const Ending ending = playOnce(call, number);
            ++tally.tried;
            if (ending.message.empty()) {
                EXPECT_EQ(ending.kept, whole.kept) << number;
            }
            if (!ending.message.empty()) {
                ++tally.told;
                EXPECT_TRUE(isSound(ending.message)) << systemCallNames[static_cast<std::size_t>(call)] << ' '
                                                     << number << ": " << ending.message;
            } else if (ending.world == whole.world && ending.notices == whole.notices) {
                ++tally.unnoticed;
            } else {
                ++tally.silent;
            }
        }
        const Ending again = playOnce(call, 0);
        EXPECT_EQ(again.world, whole.world);
        EXPECT_EQ(again.notices, whole.notices);
        std::cout << systemCallNames[static_cast<std::size_t>(call)] << ": " << tally.tried
                  << " failed once, all survived: " << tally.told << " with a message, " << tally.unnoticed
                  << " without any consequence, " << tally.silent << " played on otherwise\n";
        return tally;
    }

    std::array<std::int64_t, systemCallNames.size()> counts{};
    std::set<std::string> debugLines; // of all runs

private:
    const TemporaryFolder temporaryFolder;
    int steps = 0;
    std::string lastWorld;
};

TEST_F(Faults, EachAllocationOfAShortGame) {
    const Tally tally = failEach(SystemCall::Allocation);
    EXPECT_GT(tally.tried, 400);
    EXPECT_GT(tally.told, tally.tried / 2);
    // The one thing that is left out without the player being told: the show goes on in silence.
    EXPECT_TRUE(debugLines.contains("audio: not enough memory for zombiegame.mp3: no music from it"));
}

TEST_F(Faults, EachLookAtAFile) { EXPECT_GT(failEach(SystemCall::Status).tried, 50); }

TEST_F(Faults, EachOpeningOfAFile) { EXPECT_GT(failEach(SystemCall::Open).tried, 50); }

TEST_F(Faults, EachReadingOfAFile) { EXPECT_GT(failEach(SystemCall::Read).tried, 50); }

TEST_F(Faults, EachWritingOfAFile) { EXPECT_GT(failEach(SystemCall::Write).tried, 0); }

TEST_F(Faults, EachClosingOfAFile) { EXPECT_GT(failEach(SystemCall::Close).tried, 50); }

TEST_F(Faults, EachRenamingOfAFile) { EXPECT_GT(failEach(SystemCall::Rename).tried, 0); }

TEST_F(Faults, AFullDiskLeavesNoHalfFileAndTheRecordingElsewhere) {
    playOnce(SystemCall::Write, 1);
    EXPECT_FALSE(std::filesystem::exists("recording-unfinished.json5"));
    EXPECT_FALSE(std::filesystem::exists("recording-unfinished.json5.new"));
    ASSERT_EQ(simulated::machine.notices.size(), 1u);
    EXPECT_THAT(simulated::machine.notices[0], testing::HasSubstr("dunkman-recording-unfinished.json5"));
}

// The entry points of a driver, of which one is missing.
const char* missing = nullptr;
std::vector<std::string> asked;

void anything() {}

GlFunction lookUp(const char* name) {
    asked.emplace_back(name);
    return missing != nullptr && std::string(name) == missing ? nullptr : &anything;
}

TEST_F(Faults, EachOpenGlFunctionThatIsMissingIsNamed) {
    asked.clear();
    missing = nullptr;
    loadGlFunctions(lookUp, lookUp);
    const std::vector<std::string> names = asked;
    ASSERT_GT(names.size(), 50u);
    for (const std::string& name : names) {
        missing = name.c_str();
        try {
            loadGlFunctions(
                [](const char* wanted) {
                    return std::string(wanted) == "glGetString" ? nullptr : lookUp(wanted);
                },
                lookUp);
            ADD_FAILURE() << name;
        } catch (const FatalError& fault) {
            EXPECT_THAT(fault.what(),
                        testing::AllOf(testing::HasSubstr("OpenGL 4.5"), testing::HasSubstr(name)));
        }
    }
    std::cout << "OpenGL functions: " << names.size() << " were missing once, all named\n";
}

} // namespace

} // namespace dunkman
