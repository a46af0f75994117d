#include "audio/playback.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/audio/debug_lines.h"

namespace dunkman {
namespace {

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::int32_t invalidated = static_cast<std::int32_t>(0x88890004);
constexpr std::int32_t genericFailure = static_cast<std::int32_t>(0x80004005);

// A device that notes every call, fails where it is told to, and moves its own clock. `script` runs at each
// wait.
class ScriptedDevice : public PlaybackDevice {
public:
    explicit ScriptedDevice(std::uint32_t frames) : bufferFrames(frames) {}

    CallResult open() override {
        calls.push_back("open");
        if (openFailures > 0) {
            --openFailures;
            return {"IAudioClient::Initialize", genericFailure};
        }
        changed = false;
        return {};
    }
    CallResult start(std::uint32_t& frames) override {
        frames = bufferFrames;
        return note("start");
    }
    void close() override { calls.push_back("close"); }
    Wake wait(std::uint32_t milliseconds) override {
        calls.push_back("wait " + std::to_string(milliseconds));
        const Wake wake = script(milliseconds);
        now += (wake == Wake::TimedOut ? milliseconds : 10) * millisecond;
        return wake;
    }
    CallResult queuedFrames(std::uint32_t& frames) override {
        frames = queued;
        return note("queued");
    }
    CallResult acquireBuffer(std::uint32_t frames, std::byte*& data) override {
        calls.push_back("acquire " + std::to_string(frames));
        buffer.assign(std::size_t{frames} * AudioRing::bytesPerFrame, std::byte{0x55});
        data = buffer.data();
        return failing == "acquire" ? CallResult{"acquire", invalidated} : CallResult{};
    }
    CallResult releaseBuffer(std::uint32_t frames, bool silent) override {
        calls.push_back("release " + std::to_string(frames) + (silent ? " silent" : ""));
        buffer.resize(std::size_t{frames} * AudioRing::bytesPerFrame);
        return failing == "release" ? CallResult{"release", invalidated} : CallResult{};
    }
    bool defaultDeviceChanged() override { return changed; }
    std::int64_t clockNanoseconds() override { return now; }

    std::vector<std::string> calls;
    std::vector<std::byte> buffer;
    std::string failing;
    std::uint32_t bufferFrames;
    std::uint32_t queued = 0;
    int openFailures = 0;
    bool changed = false;
    std::int64_t now = 0;
    std::function<Wake(std::uint32_t)> script;

private:
    CallResult note(const char* call) {
        calls.push_back(call);
        return failing == call ? CallResult{call, invalidated} : CallResult{};
    }
};

class Playback : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(ring.allocate(524288).failed());
        ring.setDeviceBuffer(device.bufferFrames);
        track.samples.resize(240000);
        for (std::size_t index = 0; index < track.samples.size(); ++index) {
            track.samples[index] = static_cast<std::int16_t>(index % 30000 + 1);
        }
        testing::takeDebugLines();
    }

    float heard(std::size_t frame) const {
        float left = 0;
        std::memcpy(&left, device.buffer.data() + frame * AudioRing::bytesPerFrame, sizeof left);
        return left * 32768.0f;
    }

    // Each element runs at one wait; behind the last one the thread is asked to stop.
    void play(std::vector<std::function<PlaybackDevice::Wake()>> waits) {
        std::size_t next = 0;
        device.script = [&](std::uint32_t) {
            if (next < waits.size()) {
                return waits[next++]();
            }
            stopRequested = 1;
            return PlaybackDevice::Wake::Signalled;
        };
        playRing(ring, device, true, stopRequested);
    }

    AudioRing ring;
    ScriptedDevice device{1440};
    MusicTrack track;
    std::atomic<std::uint32_t> stopRequested = 0;
    std::uint32_t given = 0;
};

const auto signalled = [] { return PlaybackDevice::Wake::Signalled; };
const auto timedOut = [] { return PlaybackDevice::Wake::TimedOut; };

TEST_F(Playback, DrainCopiesWhatTheDeviceHasRoomFor) {
    ring.feed(&track);
    device.queued = 440;
    EXPECT_FALSE(drainStep(ring, device, 1440, given).failed());
    EXPECT_EQ(device.calls, (std::vector<std::string>{"queued", "acquire 1000", "release 1000"}));
    EXPECT_EQ(heard(0), 1.0f);
    EXPECT_EQ(heard(999), 1000.0f);
    EXPECT_EQ(given, 1000u);
    EXPECT_EQ(ring.counters().readPosition, 1000u * 8);
    EXPECT_EQ(ring.counters().consumedFrames, 1000u);
}

TEST_F(Playback, DrainReleasesOnlyWhatTheRingHad) {
    ring.feed(&track);
    EXPECT_FALSE(drainStep(ring, device, 6000, given).failed());
    EXPECT_EQ(device.calls, (std::vector<std::string>{"queued", "acquire 6000", "release 4800"}));
}

TEST_F(Playback, DrainReleasesSilenceForEverythingWhenTheRingIsEmpty) {
    EXPECT_FALSE(drainStep(ring, device, 1440, given).failed());
    EXPECT_EQ(device.calls, (std::vector<std::string>{"queued", "acquire 1440", "release 1440 silent"}));
    EXPECT_EQ(ring.counters().consumedFrames, 1440u);
    EXPECT_EQ(ring.counters().readPosition, 0u);
    EXPECT_EQ(given, 1440u);
}

TEST_F(Playback, DrainAsksForNothingWhenTheDeviceIsFull) {
    ring.feed(&track);
    for (const std::uint32_t queued : {1440u, 5000u}) {
        device.queued = queued;
        device.calls.clear();
        EXPECT_FALSE(drainStep(ring, device, 1440, given).failed());
        EXPECT_EQ(device.calls, (std::vector<std::string>{"queued", "acquire 0", "release 0 silent"}));
        EXPECT_EQ(given, 0u);
    }
    EXPECT_EQ(ring.counters().consumedFrames, 0u);
}

TEST_F(Playback, DrainEndsAtTheFirstFailingCall) {
    ring.feed(&track);
    device.failing = "queued";
    EXPECT_STREQ(drainStep(ring, device, 1440, given).call, "queued");
    EXPECT_EQ(device.calls, (std::vector<std::string>{"queued"}));
    device.failing = "acquire";
    EXPECT_STREQ(drainStep(ring, device, 1440, given).call, "acquire");
    EXPECT_EQ(ring.counters().consumedFrames, 0u);
    device.failing = "release";
    EXPECT_STREQ(drainStep(ring, device, 1440, given).call, "release");
    EXPECT_EQ(ring.counters().readPosition, 1440u * 8); // a stretch taken is never left half taken
}

TEST_F(Playback, StartsDrainsAtEachSignalAndClosesOnRequest) {
    play({signalled, signalled});
    EXPECT_EQ(device.calls,
              (std::vector<std::string>{"start", "wait 500", "queued", "acquire 1440", "release 1440 silent",
                                        "wait 500", "queued", "acquire 1440", "release 1440 silent",
                                        "wait 500", "close"}));
    EXPECT_TRUE(testing::takeDebugLines().empty());
    EXPECT_EQ(stopRequested, 0u); // taken, as by an exchange
}

TEST_F(Playback, EndsWhenTheWaitFails) {
    play({[] { return PlaybackDevice::Wake::Failed; }});
    EXPECT_EQ(device.calls, (std::vector<std::string>{"start", "wait 500", "close"}));
}

TEST_F(Playback, ReopensALostDeviceWithOneLineHoweverManyAttemptsItTakes) {
    device.openFailures = 3;
    play({signalled,
          [this] {
              device.failing = "queued";
              return PlaybackDevice::Wake::Signalled;
          },
          [this] {
              device.failing.clear();
              return PlaybackDevice::Wake::TimedOut;
          },
          timedOut, timedOut, timedOut, signalled});
    EXPECT_EQ(device.calls, (std::vector<std::string>{"start",
                                                      "wait 500",
                                                      "queued",
                                                      "acquire 1440",
                                                      "release 1440 silent",
                                                      "wait 500",
                                                      "queued",
                                                      "close",
                                                      "wait 250",
                                                      "open",
                                                      "wait 250",
                                                      "open",
                                                      "wait 250",
                                                      "open",
                                                      "wait 250",
                                                      "open",
                                                      "start",
                                                      "wait 500",
                                                      "queued",
                                                      "acquire 1440",
                                                      "release 1440 silent",
                                                      "wait 500",
                                                      "close"}));
    EXPECT_EQ(testing::takeDebugLines(),
              (std::vector<std::string>{
                  "audio: queued failed with 0x88890004: silence until the default device can "
                  "be opened anew"}));
}

TEST_F(Playback, WaitsForADeviceWhereThereIsNone) {
    device.now = 5'000 * millisecond; // long after the clock began
    device.openFailures = 1;
    device.script = [&](std::uint32_t) {
        if (device.calls.back() == "start" ||
            std::count(device.calls.begin(), device.calls.end(), "wait 500") > 0) {
            stopRequested = 1;
            return PlaybackDevice::Wake::Signalled;
        }
        return PlaybackDevice::Wake::TimedOut;
    };
    playRing(ring, device, false, stopRequested);
    EXPECT_EQ(device.calls, (std::vector<std::string>{"close", "wait 250", "open", "wait 250", "open",
                                                      "start", "wait 500", "close"}));
    EXPECT_EQ(ring.counters().consumedFrames, 500u * 48); // what would have been heard meanwhile
    EXPECT_TRUE(testing::takeDebugLines().empty());       // whoever found that there is none has said so
}

TEST_F(Playback, SaysNothingMoreWhileTheFirstDeviceDoesNotStart) {
    device.failing = "start";
    device.script = [&](std::uint32_t) {
        stopRequested = std::count(device.calls.begin(), device.calls.end(), "start") == 2 ? 1 : 0;
        return PlaybackDevice::Wake::TimedOut;
    };
    playRing(ring, device, false, stopRequested);
    EXPECT_TRUE(testing::takeDebugLines().empty()); // whoever found that there is no device has said so
}

TEST_F(Playback, AsksForTheBufferSizeAsItStarts) {
    ring.setDeviceBuffer(1440); // as it was when the stream was opened
    device.bufferFrames = 480;
    play({signalled});
    EXPECT_EQ(device.calls, (std::vector<std::string>{"start", "wait 500", "queued", "acquire 480",
                                                      "release 480 silent", "wait 500", "close"}));
    ring.feed(&track);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().readLimit - ring.counters().readPosition, 480u * 8);
}

TEST_F(Playback, TakesTheBufferSizeOfTheDeviceThatItReopens) {
    play({[this] {
              device.changed = true;
              device.bufferFrames = 960;
              return PlaybackDevice::Wake::Signalled;
          },
          timedOut, signalled});
    EXPECT_EQ(device.calls,
              (std::vector<std::string>{"start", "wait 500", "close", "wait 250", "open", "start", "wait 500",
                                        "queued", "acquire 960", "release 960 silent", "wait 500", "close"}));
    ring.feed(&track);
    drainStep(ring, device, 100, given);
    ring.feed(&track);
    EXPECT_EQ(ring.counters().readLimit - ring.counters().readPosition, 960u * 8);
}

TEST_F(Playback, TakesADeviceThatHasGoneQuietForLost) {
    device.queued = 1440;
    play({timedOut, timedOut, timedOut, signalled});
    EXPECT_EQ(device.calls,
              (std::vector<std::string>{"start", "wait 500", "queued", "acquire 0", "release 0 silent",
                                        "wait 500", "queued", "acquire 0", "release 0 silent", "close",
                                        "wait 250", "open", "start", "wait 500", "queued", "acquire 0",
                                        "release 0 silent", "wait 500", "close"}));
    // From the last signal to sound: two quiet waits and one pause, below two seconds.
    EXPECT_LT(device.now, 2000 * millisecond);
}

TEST_F(Playback, TakesADeviceThatSignalsButPlaysNothingForLost) {
    device.queued = 1440;
    play(std::vector<std::function<PlaybackDevice::Wake()>>(100, signalled)); // 10 ms each
    EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "acquire 0"), 100);
    EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "close"), 2);
    EXPECT_EQ(testing::takeDebugLines(),
              std::vector<std::string>{"audio: the device has stopped playing: opening it anew"});
}

TEST_F(Playback, ForgivesASingleQuietWait) {
    play({timedOut, signalled, timedOut, signalled, timedOut, signalled});
    EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "open"), 0);
}

TEST_F(Playback, RunsTheMusicClockOnWhileTheDeviceIsLost) {
    device.openFailures = 9;
    ring.feed(&track);
    std::vector<std::function<PlaybackDevice::Wake()>> waits = {[this] {
        device.failing = "queued";
        return PlaybackDevice::Wake::Signalled;
    }};
    for (int attempt = 0; attempt < 10; ++attempt) {
        waits.push_back([this] {
            device.failing.clear();
            ring.feed(&track);
            return PlaybackDevice::Wake::TimedOut;
        });
    }
    std::int64_t clockAtOpen = 0;
    waits.push_back([this, &clockAtOpen] {
        clockAtOpen = device.now;
        ring.feed(&track);
        return PlaybackDevice::Wake::Signalled;
    });
    play(waits);
    // The device heard sample n at n / 48,000 seconds, whatever happened before.
    EXPECT_EQ(clockAtOpen, 2510 * millisecond);
    EXPECT_EQ(heard(0), static_cast<float>(2510 * 48 % 30000 + 1)) << "position " << track.position;
}

TEST_F(Playback, PausesBeforeADeviceThatOpensButDoesNotStart) {
    device.failing = "start";
    play({timedOut, timedOut, timedOut});
    EXPECT_EQ(device.calls, (std::vector<std::string>{"start", "close", "wait 250", "open", "start", "close",
                                                      "wait 250", "open", "start", "close", "wait 250",
                                                      "open", "start", "close", "wait 250", "close"}));
    EXPECT_EQ(testing::takeDebugLines().size(), 1u);
}

TEST_F(Playback, StopsAtOnceWhileTheDeviceIsLost) {
    device.openFailures = 1000;
    device.failing = "start";
    play({timedOut, timedOut});
    EXPECT_EQ(device.calls.back(), "close");
    EXPECT_EQ(std::count(device.calls.begin(), device.calls.end(), "open"), 2);
}

TEST(CallResult, NamesTheCallAndItsCode) {
    EXPECT_EQ(describe({"IAudioClient::Initialize", genericFailure}, "no sound"),
              "audio: IAudioClient::Initialize failed with 0x80004005: no sound");
    EXPECT_TRUE((CallResult{"", genericFailure}.failed()));
    EXPECT_FALSE((CallResult{"", 1}.failed())); // S_FALSE
    EXPECT_FALSE(CallResult{}.failed());
}

} // namespace
} // namespace dunkman
