#include "audio/pcm_collector.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "audio/resampler.h"
#include "audio/wave_format.h"

namespace dunkman {

void PcmCollector::setFormat(std::uint32_t channels, std::uint32_t samplesPerSecond) {
    convert();
    channelCount = channels;
    rate = samplesPerSecond;
}

void PcmCollector::append(std::span<const std::byte> bytes) {
    pending.insert(pending.end(), bytes.begin(), bytes.end());
}

std::vector<std::int16_t> PcmCollector::take() {
    convert();
    return std::exchange(result, {});
}

// Late and all at once: the resampler looks ahead, so that each piece for itself would click at its ends.
void PcmCollector::convert() {
    std::vector<std::int16_t> samples(pending.size() / sizeof(std::int16_t));
    if (!samples.empty()) {
        std::memcpy(samples.data(), pending.data(), samples.size() * sizeof(std::int16_t));
    }
    pending.clear();
    const std::vector<std::int16_t> mono = downmix(samples, channelCount);
    const std::vector<std::int16_t> converted = resample(mono, rate, decodedFormat.samplesPerSecond);
    const std::size_t before = result.size();
    result.resize(before + converted.size());
    std::ranges::copy(converted, std::span(result).subspan(before).begin());
}

} // namespace dunkman
