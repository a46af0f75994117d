#include "audio/resampler.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "exact/exact_math.h"

namespace dunkman {

namespace {

constexpr double pi = 3.14159265358979323846;

// The filter: a sinc under a Kaiser window. With these two figures what folds back stays 80 dB or more below
// the music, and the response is flat up to nine tenths of the band.
constexpr double kaiserBeta = 8.0;
constexpr std::int64_t halfWidth = 56; // zero crossings on each side at the lower of the two rates

// What of the lower rate's band passes; the rest is the slope down to its end.
constexpr double passBand = 0.95;

// Sums kept side by side in the inner loop, so that it vectorises; rows are a multiple of this long.
constexpr std::size_t lanes = 8;

// Modified Bessel function of order 0, by its power series.
double bessel0(double x) {
    double sum = 1.0;
    double term = 1.0;
    for (int k = 1; term > sum * 1e-17; ++k) {
        const double factor = x / (2.0 * k);
        term *= factor * factor;
        sum += term;
    }
    return sum;
}

// One row of taps for each position that an output sample can have between two input samples.
struct Filter {
    std::int64_t phases = 0;  // output samples in which the pattern repeats
    std::int64_t advance = 0; // input samples in the same time
    std::int64_t reach = 0;   // input samples on each side of the output sample
    std::vector<float> taps;  // phases rows of 2 * reach

    Filter(std::uint32_t fromRate, std::uint32_t toRate) {
        const std::uint32_t divisor = std::gcd(fromRate, toRate);
        phases = toRate / divisor;
        advance = fromRate / divisor;
        const double bandwidth = std::min(1.0, static_cast<double>(toRate) / fromRate); // of the input's
        const double halfSpan = static_cast<double>(halfWidth) / bandwidth;             // input samples
        const auto halfLanes = static_cast<std::int64_t>(lanes / 2);
        reach = (static_cast<std::int64_t>(std::ceil(halfSpan)) + halfLanes - 1) / halfLanes * halfLanes;
        taps.resize(static_cast<std::size_t>(phases * 2 * reach));
        const double windowScale = 1.0 / bessel0(kaiserBeta);
        for (std::int64_t phase = 0; phase < phases; ++phase) {
            const double fraction = static_cast<double>(phase) / static_cast<double>(phases);
            const auto row = taps.begin() + static_cast<std::ptrdiff_t>(phase * 2 * reach);
            std::vector<double> exact(static_cast<std::size_t>(2 * reach));
            double sum = 0.0;
            for (std::int64_t tap = 0; tap < 2 * reach; ++tap) {
                const double distance = static_cast<double>(tap - reach + 1) - fraction;
                const double value = tapAt(distance, bandwidth * passBand, halfSpan) * windowScale;
                exact[static_cast<std::size_t>(tap)] = value;
                sum += value;
            }
            // Each row adds up to 1, so that a constant stays what it is.
            std::transform(exact.begin(), exact.end(), row,
                           [sum](double value) { return static_cast<float>(value / sum); });
        }
    }

private:
    static double tapAt(double distance, double bandwidth, double halfSpan) {
        const double relative = distance / halfSpan;
        if (relative <= -1.0 || relative >= 1.0) {
            return 0.0;
        }
        const double angle = pi * distance * bandwidth;
        const double sinc = distance == 0.0 ? 1.0 : exactSin(angle) / angle;
        return sinc * bessel0(kaiserBeta * std::sqrt(1.0 - relative * relative));
    }
};

std::int16_t toSample(float value) {
    const float clamped = std::clamp(value, -32768.0f, 32767.0f);
    return static_cast<std::int16_t>(std::lrint(clamped));
}

} // namespace

std::vector<std::int16_t> downmix(std::span<const std::int16_t> interleaved, std::uint32_t channels) {
    if (channels == 1) {
        return {interleaved.begin(), interleaved.end()};
    }
    std::vector<std::int16_t> mono(interleaved.size() / channels);
    const auto count = static_cast<std::int32_t>(channels);
    for (std::size_t frame = 0; frame < mono.size(); ++frame) {
        std::int32_t sum = 0;
        for (std::uint32_t channel = 0; channel < channels; ++channel) {
            sum += interleaved[frame * channels + channel];
        }
        // To the nearest, halves away from zero, so that silence and full scale stay what they are.
        const std::int32_t half = count / 2;
        mono[frame] = static_cast<std::int16_t>((sum < 0 ? sum - half : sum + half) / count);
    }
    return mono;
}

std::vector<std::int16_t> resample(std::span<const std::int16_t> samples, std::uint32_t fromRate,
                                   std::uint32_t toRate) {
    if (fromRate == toRate) {
        return {samples.begin(), samples.end()};
    }
    const Filter filter(fromRate, toRate);
    const auto reach = static_cast<std::size_t>(filter.reach);

    // Silence on both sides spares the inner loop every test for the ends.
    std::vector<float> padded(samples.size() + 2 * reach + 1);
    std::copy(samples.begin(), samples.end(), padded.begin() + static_cast<std::ptrdiff_t>(reach));

    const std::uint64_t length = (std::uint64_t{samples.size()} * toRate + fromRate / 2) / fromRate;
    std::vector<std::int16_t> result(static_cast<std::size_t>(length));
    std::size_t whole = 0;     // input sample at or before the output sample
    std::int64_t fraction = 0; // of an input sample, in units of 1 / phases
    for (std::int16_t& sample : result) {
        // padded[whole + 1] stands reach - 1 samples before the output sample: the row's first tap.
        const float* const input = padded.data() + whole + 1;
        const float* const row = filter.taps.data() + fraction * 2 * filter.reach;
        float sums[lanes] = {};
        for (std::size_t tap = 0; tap < 2 * reach; tap += lanes) {
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                sums[lane] += input[tap + lane] * row[tap + lane];
            }
        }
        sample = toSample(std::accumulate(std::begin(sums), std::end(sums), 0.0f));
        fraction += filter.advance;
        whole += static_cast<std::size_t>(fraction / filter.phases);
        fraction %= filter.phases;
    }
    return result;
}

} // namespace dunkman
