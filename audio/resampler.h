#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace dunkman {

// Averages the channels of interleaved samples; a last frame that is not complete is dropped. `channels`
// >= 1.
std::vector<std::int16_t> downmix(std::span<const std::int16_t> interleaved, std::uint32_t channels);

// Brings a whole mono piece from one rate to another (samples a second, both > 0), band-limited and without
// delay: sample n of the result sounds n / toRate seconds after the start, as before. Equal rates change
// nothing.
std::vector<std::int16_t> resample(std::span<const std::int16_t> samples, std::uint32_t fromRate,
                                   std::uint32_t toRate);

} // namespace dunkman
