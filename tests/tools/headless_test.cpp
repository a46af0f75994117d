#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "app/reset.h"
#include "base/fatal.h"
#include "platform/simulated/platform_sim.h"
#include "tests/fakes/small_data.h"
#include "tools/headless/key_script.h"
#include "tools/headless/options.h"
#include "tools/headless/runner.h"

namespace dunkman {

namespace {

headless::Options optionsOf(std::vector<const char*> words) {
    words.insert(words.begin(), "dunkman-headless");
    return headless::parseOptions(static_cast<int>(words.size()), words.data());
}

std::string scriptFault(const std::string& text) {
    std::istringstream stream(text);
    try {
        headless::KeyScript::read(stream, "keys.txt");
    } catch (const headless::UsageError& error) {
        return error.what();
    }
    return "no fault";
}

TEST(HeadlessOptions, NoneAreTenSecondsOfTheShowFromItsFirstScreenAtFullSize) {
    const headless::Options options = optionsOf({});
    EXPECT_EQ(options.dataFolder, "data");
    EXPECT_EQ(options.mode, InputMode::Replay);
    EXPECT_EQ(options.screen, ScreenId::Loading);
    EXPECT_EQ(options.iterations, 600);
    EXPECT_EQ(options.stepNanoseconds, 16666667);
    EXPECT_EQ(options.size.width, 1920u);
    EXPECT_EQ(options.size.height, 1080u);
    EXPECT_FALSE(options.traceKeys || options.traceWorld || options.traceDraws);
}

TEST(HeadlessOptions, AreRead) {
    const headless::Options options = optionsOf(
        {"--data", "d", "--mode", "record", "--screen", "GameOver", "--iterations", "7", "--step-ns", "5",
         "--size", "640x480", "--keys", "k", "--trace", "screen,keys,draws", "--out", "o"});
    EXPECT_EQ(options.dataFolder, "d");
    EXPECT_EQ(options.mode, InputMode::Record);
    EXPECT_EQ(options.screen, ScreenId::GameOver);
    EXPECT_EQ(options.iterations, 7);
    EXPECT_EQ(options.stepNanoseconds, 5);
    EXPECT_EQ(options.size.width, 640u);
    EXPECT_EQ(options.size.height, 480u);
    EXPECT_EQ(options.keysPath, "k");
    EXPECT_TRUE(options.traceKeys && options.traceDraws && !options.traceWorld);
    EXPECT_EQ(options.outputPath, "o");
}

TEST(HeadlessOptions, UnusableOnesAreRefused) {
    for (const std::vector<const char*>& words :
         std::vector<std::vector<const char*>>{{"--mode", "fast"},
                                               {"--screen", "menu"},
                                               {"--iterations", "-1"},
                                               {"--iterations", "x"},
                                               {"--size", "1920"},
                                               {"--size", "0x10"},
                                               {"--trace", "world,"},
                                               {"--unknown", "1"},
                                               {"--data"},
                                               {"--iterations", "9223372036854775807"}}) {
        EXPECT_THROW(optionsOf(words), headless::UsageError) << words[0];
    }
}

TEST(KeyScript, PressesAndReleasesFromItsIterationsOn) {
    std::istringstream text("# a walk\n3 0x44 down\n\n5 0x44 up # and stop\n4 0x5A down\n");
    headless::KeyScript script = headless::KeyScript::read(text, "keys.txt");
    std::set<std::int32_t> down;
    script.applyUntil(2, down);
    EXPECT_TRUE(down.empty());
    script.applyUntil(3, down);
    EXPECT_EQ(down, (std::set<std::int32_t>{0x44}));
    script.applyUntil(4, down);
    EXPECT_EQ(down, (std::set<std::int32_t>{0x44, 0x5A}));
    script.applyUntil(9, down);
    EXPECT_EQ(down, (std::set<std::int32_t>{0x5A}));
}

TEST(KeyScript, MalformedLinesAreNamedWithTheirPlace) {
    EXPECT_TRUE(scriptFault("1 0x44 down\nwhat\n").starts_with("keys.txt:2: "));
    EXPECT_TRUE(scriptFault("x 0x44 down").starts_with("keys.txt:1: "));
    EXPECT_TRUE(scriptFault("1 44 down").starts_with("keys.txt:1: "));
    EXPECT_TRUE(scriptFault("1 0x44 sideways").starts_with("keys.txt:1: "));
    EXPECT_TRUE(scriptFault("1 0x44 down up").starts_with("keys.txt:1: "));
    EXPECT_EQ(scriptFault("1 0x44 down\r\n"), "no fault");
}

// The whole trace of a run over a small data directory.
std::string traceOf(const std::vector<const char*>& words, const std::string& keys = "") {
    std::istringstream stream(keys);
    std::string trace;
    headless::run(optionsOf(words), headless::KeyScript::read(stream, "keys"),
                  [&trace](std::string_view text) { trace += text; });
    resetProgram();
    return trace;
}

TEST(HeadlessTrace, PrintsAStepLineAndAnEndLine) {
    const SmallData data;
    EXPECT_EQ(traceOf({"--iterations", "1", "--mode", "live", "--step-ns", "500000000"}),
              "step 0 time=0x1p-1 dt=0x1p-1 screen=Loading mode=Live\n"
              "end iterations=1 steps=1 reason=iterations\n");
}

TEST(HeadlessTrace, NamesTheScreenThatUpdatesAndRenders) {
    const SmallData data; // without a recording the replay ends in its first game step
    EXPECT_EQ(traceOf({"--iterations", "1", "--screen", "Game", "--step-ns", "16666667"}),
              "step 0 time=0x1.1111116cb1509p-6 dt=0x1.1111111111111p-6 screen=GameOver mode=Live\n"
              "end iterations=1 steps=1 reason=iterations\n");
}

TEST(HeadlessTrace, PrintsKeysAsUpdateSeesThem) {
    const SmallData data;
    const std::string trace =
        traceOf({"--iterations", "3", "--mode", "live", "--trace", "keys", "--screen", "Menu"},
                "2 0x5A down\n3 0x0D down\n");
    EXPECT_NE(trace.find("mode=Live\nkey 0x5A 3\nstep 2"), std::string::npos) << trace;
    EXPECT_NE(trace.find("key 0x0D 3\nkey 0x5A 1\nend "), std::string::npos) << trace;
}

TEST(HeadlessTrace, PrintsTheWorldOfGameSteps) {
    const SmallData data;
    const std::string trace =
        traceOf({"--iterations", "1", "--mode", "record", "--trace", "world", "--screen", "Game"});
    EXPECT_NE(
        trace.find("\nobject Player x=0x0p+0 y=0x0p+0 w=0x1p+1 h=0x1p+1 mirrorX=0 tilt=0x0p+0 zOffset=0x0p+0 "
                   "vx=0x0p+0 vy=0x0p+0 health=5 walk=0x0p+0 hurtRunning=0 hurtElapsed=0x0p+0 held=none "
                   "handX=0x0p+0 handY=0x0p+0 handAngle=0x0p+0 strikeX=0x0p+0 strikeY=0x0p+0\n"),
        std::string::npos)
        << trace;
    EXPECT_NE(trace.find("\nobject Camera x="), std::string::npos);
}

TEST(HeadlessTrace, CountsTheIterationThatEscapes) {
    const SmallData data;
    EXPECT_TRUE(traceOf({"--iterations", "9", "--mode", "live"}, "3 0x1B down\n")
                    .ends_with("end iterations=3 steps=2 reason=escape\n"));
}

TEST(HeadlessTrace, CountsTheStepThatQuits) {
    const SmallData data;
    const std::string trace = traceOf({"--iterations", "9999", "--mode", "record", "--screen", "Credits"});
    EXPECT_TRUE(trace.ends_with("end iterations=601 steps=601 reason=quit\n"))
        << trace.substr(trace.size() - 80);
    EXPECT_EQ(data.read("recording.json5"), "[]");
}

TEST(HeadlessTrace, IsTheSameForEveryRunInAProcess) {
    const SmallData data;
    const std::vector<const char*> words = {"--iterations", "120",  "--mode",  "record",
                                            "--screen",     "Game", "--trace", "keys,world,draws"};
    const std::string keys = "5 0x44 down\n60 0x44 up\n";
    EXPECT_EQ(traceOf(words, keys), traceOf(words, keys));
}

// The game of a short data folder, in which D is pressed in iteration 10.
void recordFor(std::int64_t iterations, const std::string& script) {
    std::istringstream keys("10 0x44 down\n" + script);
    headless::Options options = optionsOf({"--mode", "record", "--screen", "Game"});
    options.iterations = iterations;
    headless::run(options, headless::KeyScript::read(keys, "keys.txt"), [](std::string_view) {});
    resetProgram();
}

TEST(HeadlessRecording, ThatIsNotFinishedIsKeptAsInTheGame) {
    const SmallData data;
    recordFor(100, "20 0x1B down\n");
    EXPECT_NE(data.read("recording-unfinished.json5").find("\"key\": 68"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists("recording.json5"));
}

TEST(HeadlessRecording, ThatAFaultEndsIsKeptAndTheMessageSaysSo) {
    const SmallData data;
    data.write(
        "recipes.json5",
        R"({"hero": {"_type": "Player"}, "camera": {"_type": "Camera"}, "arena": {"_type": "Arena"}})");
    data.write("scene.json5",
               R"([{"recipe": "hero"}, {"recipe": "camera"}, {"recipe": "arena", "position": [0.1, 0]}])");
    try {
        recordFor(600, "");
        FAIL() << "no message";
    } catch (const FatalError& fault) {
        EXPECT_NE(std::string(fault.what()).find("\"zombie\""), std::string::npos) << fault.what();
        EXPECT_NE(std::string(fault.what()).find("recording-unfinished.json5"), std::string::npos)
            << fault.what();
    }
    resetProgram();
    EXPECT_NE(data.read("recording-unfinished.json5").find("\"key\": 68"), std::string::npos);
}

} // namespace

} // namespace dunkman
