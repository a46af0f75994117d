#include "audio/audio_output.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include <mmdeviceapi.h>

#include "tests/audio/debug_lines.h"
#include "tests/audio/fake_core_audio_win32.h"

namespace dunkman {
namespace {

using testing::FakeCoreAudio;
using Calls = std::vector<std::string>;

Calls upTo(const Calls& calls, const std::string& last) {
    const auto found = std::find(calls.begin(), calls.end(), last);
    return {calls.begin(), found == calls.end() ? found : found + 1};
}

std::ptrdiff_t countOf(const FakeCoreAudio& machine, const std::string& call) {
    const Calls calls = machine.calls();
    return std::count(calls.begin(), calls.end(), call);
}

// Until the condition holds, at most five seconds.
bool eventually(const std::function<bool()>& condition) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        if (condition()) {
            return true;
        }
        Sleep(5);
    }
    return false;
}

constexpr double stopBound = 100.0; // milliseconds

double millisecondsOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

AudioOutput* started(FakeCoreAudio& machine) {
    AudioOutput* output = nullptr;
    const CallResult result = AudioOutput::start(machine.system(), output);
    EXPECT_FALSE(result.failed()) << result.call;
    return output;
}

// Whether its thread has ended in time; one that goes on is left to itself.
bool stop(FakeCoreAudio& machine, AudioOutput* output) {
    void* const goesOn = AudioOutput::stop(output);
    if (goesOn != nullptr) {
        machine.system().closeHandle(goesOn);
    }
    return goesOn == nullptr;
}

// On a busy machine the thread may have been given up before it came to its end.
void expectNothingHeld(FakeCoreAudio& machine) {
    machine.waitForThreadEnd();
    EXPECT_EQ(machine.liveReferences(), 0);
    EXPECT_EQ(machine.liveHandles(), 0);
    EXPECT_EQ(machine.callback(), nullptr);
}

const Calls activation = {"CoCreateInstance", "GetDefaultAudioEndpoint render console",
                          "Activate IAudioClient2", "CoTaskMemAlloc"};
const Calls ending = {"GetBufferSize", "CreateEventW", "SetEventHandle", "CreateThread"};

Calls startUp(Calls middle) {
    Calls all = activation;
    all.insert(all.end(), middle.begin(), middle.end());
    all.insert(all.end(), ending.begin(), ending.end());
    return all;
}

TEST(CoreAudioStart, TakesTheShortestPeriodWhereTheSystemHasOne) {
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    EXPECT_EQ(upTo(machine.calls(), "CreateThread"),
              startUp({"QueryInterface IAudioClient3", "GetSharedModeEnginePeriod stream format",
                       "InitializeSharedAudioStream 00040000 128 stream format"}));
    EXPECT_NE(machine.streamEvent(), nullptr);
    stop(machine, output);
    expectNothingHeld(machine);
}

const char* const fallback = "Initialize shared 88040000 100000 0 stream format";

TEST(CoreAudioStart, FallsBackWithoutTheThirdInterface) {
    FakeCoreAudio machine({.hasLowLatency = false});
    AudioOutput* const output = started(machine);
    EXPECT_EQ(upTo(machine.calls(), "CreateThread"),
              startUp({"QueryInterface IAudioClient3", "GetDevicePeriod", fallback}));
    stop(machine, output);
    expectNothingHeld(machine);
}

TEST(CoreAudioStart, FallsBackWithoutAnEnginePeriod) {
    FakeCoreAudio machine({.failing = "GetSharedModeEnginePeriod"});
    AudioOutput* const output = started(machine);
    EXPECT_EQ(upTo(machine.calls(), "CreateThread"),
              startUp({"QueryInterface IAudioClient3", "GetSharedModeEnginePeriod stream format",
                       "GetDevicePeriod", fallback}));
    stop(machine, output);
    expectNothingHeld(machine);
}

TEST(CoreAudioStart, FallsBackOnANewClientWhenTheShortestPeriodIsRefused) {
    FakeCoreAudio machine({.failing = "InitializeSharedAudioStream"});
    AudioOutput* const output = started(machine);
    EXPECT_EQ(upTo(machine.calls(), "CreateThread"),
              startUp({"QueryInterface IAudioClient3", "GetSharedModeEnginePeriod stream format",
                       "InitializeSharedAudioStream 00040000 128 stream format", "CoCreateInstance",
                       "GetDefaultAudioEndpoint render console", "Activate IAudioClient2", "GetDevicePeriod",
                       fallback}));
    stop(machine, output);
    expectNothingHeld(machine);
}

struct Failure {
    const char* failing;
    const char* named; // in the result
};

// Without any of these there is no device to play on, but there may be one later.
class CoreAudioWithoutDevice : public ::testing::TestWithParam<Failure> {};

TEST_P(CoreAudioWithoutDevice, SaysSoOnceAndPlaysOnTheDeviceThatComes) {
    testing::takeDebugLines();
    FakeCoreAudio machine({.failing = GetParam().failing, .hasLowLatency = false});
    AudioOutput* const output = started(machine);
    ASSERT_NE(output, nullptr);
    EXPECT_EQ(testing::takeDebugLines(),
              Calls{std::string("audio: ") + GetParam().named +
                    " failed with 0x8889000F: silence until a default device can be opened"});
    EXPECT_EQ(countOf(machine, "Start"), 0);
    machine.mend();
    const double waited =
        millisecondsOf([&] { EXPECT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; })); });
    EXPECT_LT(waited, 2000.0);
    SetEvent(machine.streamEvent());
    EXPECT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") >= 1; }));
    stop(machine, output);
    expectNothingHeld(machine);
    EXPECT_TRUE(testing::takeDebugLines().empty());
}

TEST_P(CoreAudioWithoutDevice, StopsAtOnceWithoutHavingPlayed) {
    FakeCoreAudio machine({.failing = GetParam().failing, .hasLowLatency = false});
    AudioOutput* const output = started(machine);
    stop(machine, output);
    expectNothingHeld(machine);
    EXPECT_EQ(countOf(machine, "Start"), 0);
    testing::takeDebugLines();
}

INSTANTIATE_TEST_SUITE_P(EachCall, CoreAudioWithoutDevice,
                         ::testing::Values(Failure{"CoCreateInstance", "CoCreateInstance"},
                                           Failure{"GetDefaultAudioEndpoint",
                                                   "IMMDeviceEnumerator::GetDefaultAudioEndpoint"},
                                           Failure{"Activate", "IMMDevice::Activate"},
                                           Failure{"GetDevicePeriod", "IAudioClient::GetDevicePeriod"},
                                           Failure{"Initialize", "IAudioClient::Initialize"},
                                           Failure{"GetBufferSize", "IAudioClient::GetBufferSize"},
                                           Failure{"SetEventHandle", "IAudioClient::SetEventHandle"}),
                         [](const auto& test) { return std::string(test.param.failing); });

class CoreAudioFailure : public ::testing::TestWithParam<Failure> {};

TEST_P(CoreAudioFailure, IsNamedAndLeavesNothingBehind) {
    FakeCoreAudio machine({.failing = GetParam().failing, .hasLowLatency = false});
    AudioOutput* output = nullptr;
    const CallResult result = AudioOutput::start(machine.system(), output);
    EXPECT_TRUE(result.failed());
    EXPECT_STREQ(result.call, GetParam().named);
    EXPECT_EQ(output, nullptr);
    expectNothingHeld(machine);
    // The failing call was the last one but for those that give back.
    Calls calls = machine.calls();
    while (!calls.empty() && (calls.back() == "CloseHandle" || calls.back() == "CoTaskMemFree")) {
        calls.pop_back();
    }
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back().rfind(GetParam().failing, 0), 0u) << calls.back();
}

INSTANTIATE_TEST_SUITE_P(EachCall, CoreAudioFailure,
                         ::testing::Values(Failure{"CoTaskMemAlloc", "CoTaskMemAlloc"},
                                           Failure{"CreateEventW", "CreateEventW"},
                                           Failure{"CreateThread", "CreateThread"}),
                         [](const auto& test) { return std::string(test.param.failing); });

TEST(CoreAudioThread, AsksForTheBufferSizeItself) {
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    const Calls calls = machine.calls();
    const auto service = std::find(calls.begin(), calls.end(), "GetService render");
    ASSERT_LT(2, calls.end() - service);
    EXPECT_EQ(Calls(service, service + 3), (Calls{"GetService render", "GetBufferSize", "Start"}));
    stop(machine, output);
    expectNothingHeld(machine);
}

TEST(CoreAudioThread, AnswersEachSignal) {
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    EXPECT_EQ(countOf(machine, "GetService render"), 1);
    SetEvent(machine.streamEvent());
    ASSERT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") == 1; })); // silent
    MusicTrack track;
    track.samples.assign(10000, 1000);
    output->ring.feed(&track);
    SetEvent(machine.streamEvent());
    ASSERT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 0") == 1; }));
    stop(machine, output);
    EXPECT_EQ(countOf(machine, "Stop"), 1);
    expectNothingHeld(machine);
}

TEST(CoreAudioThread, StopsInOrder) {
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    const std::size_t before = machine.calls().size();
    if (!stop(machine, output)) {
        GTEST_SKIP() << "the audio thread got no processor time";
    }
    Calls calls = machine.calls();
    calls.erase(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(before));
    // Both threads note their calls: put aside what the audio thread did meanwhile.
    std::erase_if(calls, [](const std::string& call) {
        return call == "Stop" || call == "CoUninitialize" || call == "CoInitializeEx multithreaded" ||
               call == "CoCreateInstance";
    });
    EXPECT_EQ(calls,
              (Calls{"SetEvent", "WaitForSingleObject", "CloseHandle", "CloseHandle", "CoTaskMemFree"}));
    EXPECT_EQ(countOf(machine, "CoUninitialize"), countOf(machine, "CoInitializeEx multithreaded"));
}

TEST(CoreAudioThread, ReopensALostDeviceWithinTwoSeconds) {
    testing::takeDebugLines();
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    machine.loseDevice();
    SetEvent(machine.streamEvent());
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Stop") == 1; }));
    machine.returnDevice();
    const double waited =
        millisecondsOf([&] { EXPECT_TRUE(eventually([&] { return countOf(machine, "Start") == 2; })); });
    EXPECT_LT(waited, 2000.0);
    SetEvent(machine.streamEvent());
    EXPECT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") >= 1; }));
    stop(machine, output);
    expectNothingHeld(machine);
    EXPECT_EQ(
        testing::takeDebugLines(),
        (Calls{"audio: IAudioClient::GetCurrentPadding failed with 0x88890004: silence until the default "
               "device can be opened anew"}));
}

TEST(CoreAudioThread, FollowsTheDefaultDevice) {
    testing::takeDebugLines();
    FakeCoreAudio machine({});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    auto* const callback = static_cast<IMMNotificationClient*>(machine.callback());
    ASSERT_NE(callback, nullptr);
    // Recording devices and devices for calls are none of ours.
    callback->OnDefaultDeviceChanged(eCapture, eConsole, L"other");
    callback->OnDefaultDeviceChanged(eRender, eCommunications, L"other");
    SetEvent(machine.streamEvent());
    ASSERT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") == 1; }));
    EXPECT_EQ(countOf(machine, "Stop"), 0);
    callback->OnDefaultDeviceChanged(eRender, eConsole, L"other");
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 2; }));
    EXPECT_EQ(countOf(machine, "Stop"), 1);
    stop(machine, output);
    expectNothingHeld(machine);
    EXPECT_EQ(testing::takeDebugLines().size(), 1u);
}

// Brings a machine into a state, stops, and measures that. A processor that is busy elsewhere adds to a
// single measurement, so the best of a few counts; what waits for anything waits every time.
double bestStop(const FakeCoreAudio::Script& script,
                const std::function<void(FakeCoreAudio&)>& bringIntoState) {
    double best = 1e9;
    for (int round = 0; round < 5 && best >= stopBound; ++round) {
        FakeCoreAudio machine(script);
        AudioOutput* const output = started(machine);
        bringIntoState(machine);
        best = std::min(best, millisecondsOf([&] { stop(machine, output); }));
        expectNothingHeld(machine);
    }
    return best;
}

TEST(CoreAudioStop, ReturnsAtOnceWhilePlaying) {
    EXPECT_LT(bestStop({},
                       [](FakeCoreAudio& machine) {
                           ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
                       }),
              stopBound);
}

TEST(CoreAudioStop, ReturnsAtOnceBeforeTheThreadHasBegun) {
    EXPECT_LT(bestStop({}, [](FakeCoreAudio&) {}), stopBound);
}

TEST(CoreAudioStop, ReturnsAtOnceWhileTheDeviceIsLost) {
    EXPECT_LT(bestStop({.failing = "GetService"},
                       [](FakeCoreAudio& machine) {
                           ASSERT_TRUE(
                               eventually([&] { return countOf(machine, "GetService render") >= 2; }));
                       }),
              stopBound);
}

TEST(CoreAudioStop, LeavesAHangingThreadToItself) {
    EXPECT_LT(bestStop({.renderBlocksFor = 700},
                       [](FakeCoreAudio& machine) {
                           ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
                           SetEvent(machine.streamEvent());
                           ASSERT_TRUE(
                               eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") == 1; }));
                       }),
              stopBound);
}

TEST(CoreAudioStop, LeavesAStreamThatWillNotCloseToTheThread) {
    EXPECT_LT(bestStop({.closeBlocksFor = 700},
                       [](FakeCoreAudio& machine) {
                           ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
                       }),
              stopBound);
}

TEST(CoreAudioStop, SaysWhetherTheThreadHasEnded) {
    FakeCoreAudio machine({.renderBlocksFor = 700});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    SetEvent(machine.streamEvent());
    ASSERT_TRUE(eventually([&] { return countOf(machine, "ReleaseBuffer 1056 2") == 1; }));
    EXPECT_FALSE(stop(machine, output));
    EXPECT_GT(machine.liveReferences(), 0); // still in use over there
    expectNothingHeld(machine);
}

TEST(CoreAudioStop, HandsOutAThreadThatGoesOnSoThatItCanBeWaitedFor) {
    FakeCoreAudio machine({.closeBlocksFor = 300});
    AudioOutput* const output = started(machine);
    ASSERT_TRUE(eventually([&] { return countOf(machine, "Start") == 1; }));
    void* const goesOn = AudioOutput::stop(output);
    ASSERT_NE(goesOn, nullptr);
    EXPECT_TRUE(machine.system().waitForThread(goesOn, 60000));
    EXPECT_EQ(machine.liveReferences(), 0);
    machine.system().closeHandle(goesOn);
    expectNothingHeld(machine);
}

TEST(CoreAudioStop, LeaksNothingInManyRounds) {
    FakeCoreAudio machine({});
    for (int round = 0; round < 200; ++round) {
        AudioOutput* const output = started(machine);
        output->ring.feed(nullptr);
        stop(machine, output);
        machine.waitForThreadEnd();
        ASSERT_EQ(machine.liveReferences(), 0) << round;
        ASSERT_EQ(machine.liveHandles(), 0) << round;
    }
}

} // namespace
} // namespace dunkman
