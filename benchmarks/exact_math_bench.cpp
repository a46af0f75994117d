// Nanoseconds for each call of the exact functions, over arguments as the game has them; the C library's
// functions stand beside them for comparison.
#include "exact/exact_math.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstddef>
#include <random>

namespace {

using namespace dunkman;

constexpr std::size_t argumentCount = 4096;

std::array<double, argumentCount> arguments(double least, double greatest) {
    std::mt19937_64 random(1);
    std::array<double, argumentCount> result = {};
    for (double& argument : result) {
        argument = least + (greatest - least) * static_cast<double>(random() >> 11) * 0x1p-53;
    }
    return result;
}

template <typename Number>
void measure(benchmark::State& state, Number (*function)(Number), double least, double greatest) {
    const std::array<double, argumentCount> values = arguments(least, greatest);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(function(static_cast<Number>(values[next])));
        next = (next + 1) % argumentCount;
    }
}

double librarySin(double x) { return std::sin(x); }
double libraryExp(double x) { return std::exp(x); }
double libraryAtan(double x) { return std::atan(x); }
float libraryTan(float x) { return std::tan(x); }

BENCHMARK_CAPTURE(measure, sin_below_quarter_pi, exactSin, -0.78, 0.78);
BENCHMARK_CAPTURE(measure, sin_walk_phase, exactSin, 0.0, 1000.0);
BENCHMARK_CAPTURE(measure, sin_below_2_to_31, exactSin, 0.0, 0x1p31);
BENCHMARK_CAPTURE(measure, sin_beyond_2_to_31, exactSin, 0x1p31, 0x1p40);
BENCHMARK_CAPTURE(measure, cos_walk_phase, exactCos, 0.0, 1000.0);
BENCHMARK_CAPTURE(measure, exp_camera, exactExp, -1.0, 0.0);
BENCHMARK_CAPTURE(measure, exp_subnormal, exactExp, -745.0, -709.0);
BENCHMARK_CAPTURE(measure, atan_aspect_ratio, exactAtan, 0.5, 4.0);
BENCHMARK_CAPTURE(measure, tan_half_view, exactTan, 0.1, 0.7);
BENCHMARK_CAPTURE(measure, library_sin_walk_phase, librarySin, 0.0, 1000.0);
BENCHMARK_CAPTURE(measure, library_exp_camera, libraryExp, -1.0, 0.0);
BENCHMARK_CAPTURE(measure, library_atan_aspect_ratio, libraryAtan, 0.5, 4.0);
BENCHMARK_CAPTURE(measure, library_tan_half_view, libraryTan, 0.1, 0.7);

} // namespace
