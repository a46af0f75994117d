#include "benchmarks/json5_peers.h"
#include "benchmarks/json5_texts.h"
#include "json5/canonical.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

// Bytes of text per second that the reader takes and the writer gives, beside other libraries where they are
// installed, and the hexadecimal floats of traces. The rows are called read/TEXT/BYTES/LIBRARY and
// write/TEXT/BYTES/LIBRARY; rows that are to be compared stand side by side, and
// --benchmark_enable_random_interleaving=true with some repetitions mixes them. Reading includes giving the
// tree back.

namespace {

using namespace dunkman;
using bench::Ours;

void countBytes(benchmark::State& state, std::size_t bytesPerRound) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytesPerRound) * state.iterations());
}

template <typename Library> void read(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        const typename Library::Value value = Library::read(text);
        benchmark::DoNotOptimize(&value);
        benchmark::ClobberMemory();
    }
    countBytes(state, text.size());
}

template <typename Library> void write(benchmark::State& state, const std::string& text) {
    const typename Library::Value value = Library::read(text);
    std::size_t size = 0;
    for (auto _ : state) {
        const std::string out = Library::write(value);
        benchmark::DoNotOptimize(out.data());
        size = out.size();
    }
    countBytes(state, size);
}

void printHexFloats(benchmark::State& state) {
    std::mt19937_64 random(4);
    std::vector<double> numbers;
    numbers.reserve(10000);
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

using MakeText = std::string (*)(std::size_t textSize);
using Measure = void (*)(benchmark::State& state, const std::string& text);

// The text is made when the row runs, so that a filter costs nothing.
void addRow(const std::string& name, Measure measure, MakeText makeText, std::size_t textSize) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        measure(state, makeText(textSize));
    })->Unit(benchmark::kMillisecond);
}

template <typename Library>
void addReadRow(const std::string& row, const char* library, MakeText makeText, std::size_t textSize) {
    addRow("read/" + row + library, read<Library>, makeText, textSize);
}

template <typename Library>
void addWriteRow(const std::string& row, const char* library, MakeText makeText, std::size_t textSize) {
    addRow("write/" + row + library, write<Library>, makeText, textSize);
}

bool addRows() {
    struct Text {
        const char* name;
        MakeText make;
    };
    constexpr Text plainTexts[] = {
        {"scene", bench::sceneText}, {"numbers", bench::numberText}, {"recording", bench::recordingText}};
    // A file as the game has them, and one that no cache holds.
    for (const std::size_t size : {std::size_t{64'000}, std::size_t{4'000'000}}) {
        const std::string ending = "/" + std::to_string(size) + "/";
        for (const Text& text : plainTexts) {
            const std::string row = text.name + ending;
            addReadRow<Ours>(row, "ours", text.make, size);
#ifdef DUNKMAN_BENCH_NLOHMANN
            addReadRow<bench::Nlohmann>(row, "nlohmann", text.make, size);
#endif
#ifdef DUNKMAN_BENCH_RAPIDJSON
            addReadRow<bench::RapidJson>(row, "rapidjson", text.make, size);
#endif
            addWriteRow<Ours>(row, "ours", text.make, size);
#ifdef DUNKMAN_BENCH_NLOHMANN
            addWriteRow<bench::Nlohmann>(row, "nlohmann", text.make, size);
#endif
#ifdef DUNKMAN_BENCH_RAPIDJSON
            addWriteRow<bench::RapidJson>(row, "rapidjson", text.make, size);
#endif
        }
        addReadRow<Ours>("dialect" + ending, "ours", bench::dialectText, size);
    }
    benchmark::RegisterBenchmark("hexFloats", printHexFloats)->Unit(benchmark::kMicrosecond);
    return true;
}

const bool rowsAdded = addRows();

} // namespace
