#include <cstring>
#include <vector>

#include <benchmark/benchmark.h>

#include "audio/fed_ring.h"
#include "audio/mixer.h"
#include "audio/music_track.h"
#include "audio/music_writer.h"
#include "audio/resampler.h"
#include "audio/sound.h"

// What the sound costs a simulation step. MixTrack is to be read beside CopyOutputBytes, which writes as many
// bytes.
namespace dunkman {
namespace {

constexpr std::uint32_t stepFrames = 4800; // what one feed mixes

MusicTrack track(std::size_t frames, std::uint64_t position) {
    MusicTrack result;
    result.samples.resize(frames);
    for (std::size_t index = 0; index < frames; ++index) {
        result.samples[index] = static_cast<std::int16_t>(index * 7919);
    }
    result.loop = true;
    result.position = position;
    return result;
}

void countFrames(benchmark::State& state) {
    state.counters["frames"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * stepFrames, benchmark::Counter::kIsRate);
}

void CopyOutputBytes(benchmark::State& state) {
    const std::vector<float> source(2 * stepFrames, 0.5f);
    std::vector<float> destination(2 * stepFrames);
    for (auto _ : state) {
        std::memcpy(destination.data(), source.data(), destination.size() * sizeof(float));
        benchmark::DoNotOptimize(destination.data());
        benchmark::ClobberMemory();
    }
    countFrames(state);
}
BENCHMARK(CopyOutputBytes);

void MixTrack(benchmark::State& state) {
    const MusicTrack music = track(48000, 1000);
    std::vector<float> destination(2 * stepFrames);
    for (auto _ : state) {
        mixTrack(destination.data(), stepFrames, 1.0f, music);
        benchmark::DoNotOptimize(destination.data());
        benchmark::ClobberMemory();
    }
    countFrames(state);
}
BENCHMARK(MixTrack);

void MixTrackAcrossTheLoop(benchmark::State& state) {
    const MusicTrack music = track(48000, 46000);
    std::vector<float> destination(2 * stepFrames);
    for (auto _ : state) {
        mixTrack(destination.data(), stepFrames, 1.0f, music);
        benchmark::DoNotOptimize(destination.data());
        benchmark::ClobberMemory();
    }
    countFrames(state);
}
BENCHMARK(MixTrackAcrossTheLoop);

// One whole step: lock, clear, mix, advance; the device takes 800 frames in between.
void FeedAudio(benchmark::State& state) {
    startAudio();
    writable::music.gameTrack = track(48000 * 60, 0);
    writable::music.musicSelection = MusicSelection::Game;
    for (auto _ : state) {
        feedAudio();
        fedRing->endDrain(fedRing->beginDrain(800));
    }
    countFrames(state);
    resetAudio();
}
BENCHMARK(FeedAudio);

void ResampleOneSecond(benchmark::State& state) {
    const MusicTrack music = track(44100, 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(resample(music.samples, 44100, 48000));
    }
}
BENCHMARK(ResampleOneSecond)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace dunkman
