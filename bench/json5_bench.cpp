#include "json5/canonical.h"
#include "json5/reader.h"
#include "json5/writer.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

// Bytes per second of the reader, the writer and the hexadecimal floats of traces.

namespace {

using namespace dunkman;

// Entries as a scene has them: unquoted keys, names, positions, now and then a prefab and a comment.
std::string sceneText(std::size_t textSize) {
    std::mt19937_64 random(1);
    const auto coordinate = [&random] {
        std::string text = std::to_string(static_cast<double>(random() % 40000) / 1000.0 - 20.0);
        return text.substr(0, text.size() - 3);
    };
    std::string text = "// arena\n[\n";
    while (text.size() < textSize) {
        text += "  { recipe: \"palmTreeTall\", tag: \"scenery\", position: [" + coordinate() + ", " +
                coordinate() + "], mirrorX: " + (random() % 2 == 0 ? "true" : "false") +
                ", zOffset: 0.25 },\n";
        if (random() % 4 == 0) {
            text += "  // the bar\n  { prefab: 'beachBar', offset: [" + coordinate() +
                    ", 3], overrides: {table: {size: [1, 1.5]}} },\n";
        }
    }
    return text + "]\n";
}

std::string numberText(std::size_t textSize) {
    std::mt19937_64 random(2);
    std::string text = "[";
    while (text.size() < textSize) {
        text += std::to_string(static_cast<double>(random() % 100000000) / 100000.0) + ", ";
        text += std::to_string(random() % 1000000) + ", ";
    }
    return text + "]\n";
}

std::string recordingText(std::size_t textSize) {
    std::mt19937_64 random(3);
    JsonValue recording = JsonValue::makeArray();
    const int frames = static_cast<int>(textSize / 120);
    for (int frame = 0; frame < frames; ++frame) {
        JsonValue& record = recording.append() = JsonValue::makeObject();
        record.member("frame") = JsonValue::makeInteger(frame);
        JsonValue& change = (record.member("newKeyStates") = JsonValue::makeArray()).append();
        change = JsonValue::makeObject();
        change.member("key") = JsonValue::makeInteger(static_cast<std::int64_t>(random() % 128));
        change.member("state") = JsonValue::makeInteger(static_cast<std::int64_t>(random() % 4));
    }
    std::string text;
    writeJson5(recording, text, "  ");
    return text;
}

JsonValue parse(const std::string& text) {
    JsonValue value;
    Json5Report report;
    parseDocument(std::string_view(text), report, value);
    return value;
}

void countBytes(benchmark::State& state, std::size_t bytesPerRound) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytesPerRound) * state.iterations());
}

void readText(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        JsonValue value = parse(text);
        benchmark::DoNotOptimize(value);
    }
    countBytes(state, text.size());
}

void writeText(benchmark::State& state, const std::string& text) {
    const JsonValue value = parse(text);
    std::size_t size = 0;
    for (auto _ : state) {
        std::string out;
        writeJson5(value, out, "  ");
        benchmark::DoNotOptimize(out.data());
        size = out.size();
    }
    countBytes(state, size);
}

std::size_t sizeOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range(0)); }

void readScene(benchmark::State& state) { readText(state, sceneText(sizeOf(state))); }
void readNumbers(benchmark::State& state) { readText(state, numberText(sizeOf(state))); }
void readRecording(benchmark::State& state) { readText(state, recordingText(sizeOf(state))); }
void writeScene(benchmark::State& state) { writeText(state, sceneText(sizeOf(state))); }
void writeNumbers(benchmark::State& state) { writeText(state, numberText(sizeOf(state))); }
void writeRecording(benchmark::State& state) { writeText(state, recordingText(sizeOf(state))); }

void printHexFloats(benchmark::State& state) {
    std::mt19937_64 random(4);
    std::vector<double> numbers;
    for (int count = 0; count < 10000; ++count) {
        numbers.push_back(static_cast<double>(random() % 1000000) / 977.0 - 500.0);
    }
    std::string out;
    for (auto _ : state) {
        out.clear();
        for (const double number : numbers) {
            appendHexFloat(out, number);
        }
        benchmark::DoNotOptimize(out.data());
    }
    countBytes(state, out.size());
}

// A file as the game has them, and one that no cache holds.
constexpr std::int64_t ordinarySize = 64'000;
constexpr std::int64_t hugeSize = 4'000'000;

BENCHMARK(readScene)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(readNumbers)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(readRecording)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(writeScene)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(writeNumbers)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(writeRecording)->Arg(ordinarySize)->Arg(hugeSize)->Unit(benchmark::kMillisecond);
BENCHMARK(printHexFloats)->Unit(benchmark::kMicrosecond);

} // namespace
