#include "audio/ring.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <random>
#include <thread>

#include <gtest/gtest.h>

// Feed and drain on two threads of their own, ten simulated minutes at full speed. Run it under the thread
// sanitizer too. Simulated time runs on both threads; each waits for the other, but events less than the
// overlap apart happen in any order and at the same time.
namespace dunkman {
namespace {

constexpr double simulatedSeconds = 600.0;
constexpr double overlap = 0.002; // seconds
constexpr std::uint32_t deviceFrames = 1440;
constexpr std::uint64_t trackFrames = 60013; // prime: loops fall together with nothing

class Clocks {
public:
    // Blocks until the other thread's next event is not earlier than `time` by more than the overlap.
    static void await(const std::atomic<double>& other, double time) {
        while (other.load(std::memory_order_relaxed) < time - overlap) {
            std::this_thread::yield();
        }
    }

    // Relaxed throughout: the clocks must not lend the ring an order that it does not make itself.
    std::atomic<double> nextFeed = 0.0;
    std::atomic<double> nextDrain = 0.0;
};

struct Heard {
    std::uint64_t frames = 0;
    std::uint64_t silentFrames = 0;
    int underruns = 0;
    int unexcusedUnderruns = 0; // without a stall of 100 ms behind them
    int wrongSides = 0;
    int wrongSamples = 0; // neither the sample that is due nor explained by a stall just before
};

// Seconds between two feeds: about 60 a second, sometimes slow, now and then a stall of up to a quarter
// second.
double feedInterval(std::mt19937& random) {
    const auto uniform = [&random](double from, double to) {
        return from + (to - from) * (static_cast<double>(random()) / 4294967296.0);
    };
    const auto kind = static_cast<std::uint32_t>(random() % 100);
    if (kind < 2) {
        return uniform(0.0, 0.25);
    }
    return kind < 10 ? uniform(0.0, 0.09) : uniform(0.0, 2.0 / 60.0);
}

TEST(RingStress, IsHeardInOrderWithSilenceOnlyAfterStalls) {
    AudioRing ring;
    // Wraps past 2^32 on the way.
    ASSERT_FALSE(ring.allocate(524288, 0xF8000000u).failed());
    ring.setDeviceBuffer(deviceFrames);
    MusicTrack track;
    track.loop = true;
    for (std::uint64_t index = 0; index < trackFrames; ++index) {
        track.samples.push_back(static_cast<std::int16_t>(static_cast<int>(index) - 30006));
    }
    ring.feed(&track);

    Clocks clocks;
    std::atomic<double> longestGapBefore = 0.0; // of the feeds, up to now; only ever read for the summary
    std::atomic<double> lastFeed = 0.0;

    std::thread feeder([&] {
        std::mt19937 random(12345);
        double time = 0.0;
        while (time < simulatedSeconds) {
            const double interval = feedInterval(random);
            time += interval;
            longestGapBefore.store(std::max(longestGapBefore.load(), interval), std::memory_order_relaxed);
            clocks.nextFeed.store(time, std::memory_order_relaxed);
            Clocks::await(clocks.nextDrain, time);
            ring.feed(&track);
            lastFeed.store(time, std::memory_order_relaxed);
        }
        clocks.nextFeed.store(1e9, std::memory_order_relaxed);
    });

    Heard heard;
    std::mt19937 random(54321);
    double time = 0.0;
    std::uint64_t due = 0;         // sample that the clock of the music stands at
    double lastUnderrun = -1000.0; // seconds
    while (time < simulatedSeconds - 0.5) {
        // Periods of 3 to 20 ms; the device takes what time has passed, as it never has room for more.
        const auto frames = static_cast<std::uint32_t>(144 + random() % 816);
        time += static_cast<double>(frames) / 48000.0;
        clocks.nextDrain.store(time, std::memory_order_relaxed);
        Clocks::await(clocks.nextFeed, time);
        const double fedBefore = lastFeed.load(std::memory_order_relaxed);
        const AudioRing::Drain drain = ring.beginDrain(frames);
        if (drain.frames == 0) {
            ++heard.underruns;
            heard.silentFrames += frames;
            if (time - fedBefore < 0.1 - overlap) {
                ++heard.unexcusedUnderruns;
            }
            lastUnderrun = time;
            due += frames;
            continue;
        }
        const bool shortlyAfterUnderrun = time - lastUnderrun < 0.4;
        for (std::uint32_t frame = 0; frame < drain.frames; ++frame) {
            float sides[2];
            std::memcpy(sides, drain.data + frame * AudioRing::bytesPerFrame, sizeof sides);
            heard.wrongSides += sides[0] == sides[1] ? 0 : 1;
            const auto index = static_cast<std::uint64_t>(static_cast<int>(sides[0] * 32768.0f) + 30006);
            const std::uint64_t lag = (due % trackFrames + trackFrames - index) % trackFrames;
            // A feed that was mixing while the device ran dry comes late by what was silent; it catches up
            // with the next feed. At all other times the sample is the one that is due.
            const bool inOrder = lag == 0 || (shortlyAfterUnderrun && lag <= 12000);
            heard.wrongSamples += inOrder ? 0 : 1;
            ++due;
        }
        heard.frames += drain.frames;
        ring.endDrain(drain);
    }
    clocks.nextDrain.store(1e9, std::memory_order_relaxed);
    feeder.join();

    RecordProperty("frames", std::to_string(heard.frames));
    RecordProperty("underruns", heard.underruns);
    EXPECT_EQ(heard.wrongSides, 0);
    EXPECT_EQ(heard.wrongSamples, 0);
    EXPECT_EQ(heard.unexcusedUnderruns, 0);
    // The run has seen what it is about.
    EXPECT_GT(longestGapBefore.load(), 0.2);
    EXPECT_GT(heard.underruns, 100);
    EXPECT_GT(heard.frames, 25'000'000u);
}

} // namespace
} // namespace dunkman
