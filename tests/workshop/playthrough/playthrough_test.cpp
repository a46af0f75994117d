#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "app/recording.h"
#include "base/frame_state_writer.h"
#include "tests/workshop/playthrough/playthrough.h"

// The recorded play-through: that it is what the key script gives, that it replays, and that it tells its
// story.

namespace dunkman {
namespace {

class Playthrough : public ShippedData {
protected:
    // Played once for all tests; each looks at it from its own side.
    static const std::vector<StepNote>& steps() {
        static const std::vector<StepNote> played = play(KeySource::KeyScript);
        return played;
    }

    static int heartsOnReaching(double x) {
        const auto found =
            std::find_if(steps().begin(), steps().end(), [x](const StepNote& s) { return s.heroX > x; });
        return found != steps().end() ? found->hearts : -100;
    }

    static int killsBefore(double x) {
        const auto found =
            std::find_if(steps().begin(), steps().end(), [x](const StepNote& s) { return s.heroX > x; });
        return found != steps().end() ? found->corpses : -100;
    }
};

// The first step in which two games differ, or -1.
int firstDifference(const std::vector<StepNote>& left, const std::vector<StepNote>& right) {
    const auto different =
        std::mismatch(left.begin(), left.end(), right.begin(), right.end(),
                      [](const StepNote& a, const StepNote& b) { return a.digest == b.digest; });
    if (different.first == left.end() && different.second == right.end()) {
        return -1;
    }
    return static_cast<int>(different.first - left.begin());
}

TEST_F(Playthrough, RecordingHoldsWhatTheKeyScriptGives) {
    play(KeySource::KeyScript);
    const std::vector<InputRecord> recorded = recording.records;
    ASSERT_FALSE(recorded.empty());
    writable::frameState.inputMode = InputMode::Replay;
    loadRecording();
    ASSERT_EQ(recording.records.size(), recorded.size());
    for (std::size_t index = 0; index < recorded.size(); ++index) {
        ASSERT_EQ(recording.records[index].frame, recorded[index].frame) << "record " << index;
        ASSERT_EQ(recording.records[index].newKeyStates, recorded[index].newKeyStates) << "record " << index;
    }
}

// The replay leaves in the step of the last record, which is the one in which the hero dies: nothing before
// is missing.
TEST_F(Playthrough, ReplayEqualsTheRecordedGameUpToTheStepOfDeath) {
    std::vector<StepNote> recorded = steps();
    ASSERT_EQ(recorded.back().hearts, -1);
    recorded.pop_back();
    const std::vector<StepNote> replayed = play(KeySource::Recording);
    EXPECT_EQ(replayed.size(), recorded.size());
    EXPECT_EQ(firstDifference(recorded, replayed), -1);
}

// A zombie may come in at the edge of what is on screen, so a recording belongs to a shape of window. This one is
// made to go the same in all that people have.
TEST_F(Playthrough, ReplaysTheSameFromFourToThreeToTwentyOneToNine) {
    std::vector<StepNote> recorded = steps();
    recorded.pop_back();
    for (const platform::ClientSize window : {platform::ClientSize{1600, 1200},
                                              {1024, 768},
                                              {1500, 1000},
                                              {1920, 1200},
                                              {1366, 768},
                                              {1280, 720},
                                              {2160, 1080},
                                              {2560, 1080},
                                              {2520, 1080},
                                              {3440, 1440}}) {
        const std::vector<StepNote> replayed = play(KeySource::Recording, window);
        EXPECT_EQ(replayed.size(), recorded.size()) << window.width << " x " << window.height;
        EXPECT_EQ(firstDifference(recorded, replayed), -1) << window.width << " x " << window.height;
    }
}

// One line a second of play: step, place, hearts, corpses and the digest of the world, the last step in any
// case.
std::string summaryOf(const std::vector<StepNote>& steps) {
    std::string text;
    for (std::size_t step = 0; step < steps.size(); ++step) {
        if (step % 60 == 0 || step + 1 == steps.size()) {
            const StepNote& note = steps[step];
            char line[96];
            std::snprintf(line, sizeof line, "%5d x=%6.2f hearts=%2d corpses=%2d %016llx\n",
                          static_cast<int>(step), note.heroX, note.hearts, note.corpses,
                          static_cast<unsigned long long>(note.digest));
            text += line;
        }
    }
    return text;
}

// The same game on every platform and with every compiler, to the last bit. After a change of level, rules or
// plan: run this test with DUNKMAN_UPDATE_EXPECTED=1 in the environment and read the difference.
TEST_F(Playthrough, IsTheExpectedGameEverywhere) {
    constexpr const char* path = "../tests/workshop/playthrough/expected_playthrough.txt";
    const std::string summary = summaryOf(steps());
    if (std::getenv("DUNKMAN_UPDATE_EXPECTED") != nullptr) {
        std::ofstream(path, std::ios::binary) << summary;
        GTEST_SKIP() << path << " written";
    }
    std::ifstream file(path);
    std::istringstream lines(summary);
    std::string expected;
    std::string line;
    while (std::getline(file, expected)) {
        ASSERT_TRUE(std::getline(lines, line)) << "the game ends before: " << expected;
        ASSERT_EQ(line, expected);
    }
    EXPECT_FALSE(std::getline(lines, line)) << "not expected: " << line;
}

TEST_F(Playthrough, LastsTwoToThreeMinutes) {
    const double seconds = static_cast<double>(steps().size()) / 60.0;
    EXPECT_GE(seconds, 120.0);
    EXPECT_LE(seconds, 180.0);
}

TEST_F(Playthrough, HesitatesAtTheSign) {
    // More than a second beside the post at x = -5.2, unarmed.
    const auto beside = std::count_if(steps().begin(), steps().end(), [](const StepNote& step) {
        return step.heroX > -7.0 && step.heroX < -5.0 && step.held == ObjectType::Invalid;
    });
    EXPECT_GT(beside, 90);
}

TEST_F(Playthrough, SwingsTheFlamingoAtTheAirFirst) {
    const auto swing =
        std::find_if(steps().begin(), steps().end(), [](const StepNote& step) { return step.swung; });
    ASSERT_NE(swing, steps().end());
    EXPECT_EQ(swing->held, ObjectType::Flamingo);
    EXPECT_EQ((swing + 60)->corpses, 0);
}

TEST_F(Playthrough, KillsInAllFiveActs) {
    ASSERT_EQ(acts().size(), 5u);
    int kills = 0;
    for (std::size_t act = 1; act < acts().size(); ++act) {
        const double end = acts()[act].from;
        EXPECT_GT(killsBefore(end), kills) << "before " << acts()[act].name;
        kills = killsBefore(end);
    }
    EXPECT_GT(killsBefore(fights().back()), kills) << "before the last fight";
    EXPECT_GT(steps().back().corpses, killsBefore(fights().back())) << "in the last fight";
}

// The level asks for that of every play-through, and its builder refuses others.
TEST_F(Playthrough, LeavesNoFightOut) {
    playthrough::Story story(acts(), fights());
    for (const StepNote& step : steps()) {
        story.note(0, step.heroX, step.cameraHeld);
    }
    EXPECT_THAT(story.faults(static_cast<std::int64_t>(steps().size()), true), testing::IsEmpty());
}

TEST_F(Playthrough, KillsWithBothWeapons) {
    int byFlamingo = 0;
    int byPineapple = 0;
    for (std::size_t index = 1; index < steps().size(); ++index) {
        const StepNote& before = steps()[index - 1];
        const StepNote& step = steps()[index];
        const int kills = step.corpses - before.corpses;
        const bool melee = step.swung && step.held == ObjectType::Flamingo;
        if (kills > 0 && melee) {
            byFlamingo += kills;
        } else if (kills > 0) {
            EXPECT_LT(step.projectiles, before.projectiles) << "killed by nothing in step " << index;
            byPineapple += kills;
        }
    }
    EXPECT_GE(byFlamingo, 20);
    EXPECT_GE(byPineapple, 10);
    RecordProperty("killsByFlamingo", byFlamingo);
    RecordProperty("killsByPineapple", byPineapple);
}

TEST_F(Playthrough, LandsAPineappleFromAfar) {
    // A fruit flies at 6 units a second: half a second in the air is 3 units.
    int flight = 0;
    int longestHit = 0;
    for (std::size_t index = 1; index < steps().size(); ++index) {
        const StepNote& step = steps()[index];
        if (step.corpses > steps()[index - 1].corpses && step.projectiles < steps()[index - 1].projectiles) {
            longestHit = std::max(longestHit, flight);
        }
        flight = step.projectiles > 0 ? flight + 1 : 0;
    }
    EXPECT_GE(longestHit, 30);
}

TEST_F(Playthrough, BreaksAPineappleAndSwitchesBackToTheFlamingo) {
    bool broke = false;
    bool switched = false;
    for (std::size_t index = 1; index < steps().size(); ++index) {
        const StepNote& before = steps()[index - 1];
        const StepNote& step = steps()[index];
        broke = broke || (before.held == ObjectType::Pineapple && before.durability == 1 &&
                          step.held == ObjectType::Invalid && step.projectiles > before.projectiles);
        switched =
            switched || (broke && before.held == ObjectType::Invalid && step.held == ObjectType::Flamingo);
    }
    EXPECT_TRUE(broke);
    EXPECT_TRUE(switched);
}

TEST_F(Playthrough, LosesHeartsOneByOneAllTheWay) {
    EXPECT_EQ(steps().front().hearts, 5);
    for (std::size_t index = 1; index < steps().size(); ++index) {
        const int lost = steps()[index - 1].hearts - steps()[index].hearts;
        ASSERT_TRUE(lost == 0 || lost == 1) << "step " << index;
    }
    // Some before the last fight, but not all tension gone.
    EXPECT_LT(heartsOnReaching(fights().back()), 5);
    EXPECT_GE(heartsOnReaching(fights().back()), 2);
}

TEST_F(Playthrough, FallsInTheLastFightUnderACrowd) {
    EXPECT_EQ(steps().back().hearts, -1);
    EXPECT_TRUE(steps().back().cameraHeld);
    EXPECT_GT(steps().back().heroX, fights().back() - 3.0);
    EXPECT_GE(steps().back().zombies, 6);
}

} // namespace
} // namespace dunkman
