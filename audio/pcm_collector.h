#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace dunkman {

// Gathers what a decoder delivers, 16-bit samples of any rate and number of channels, into mono at 48 kHz.
// The format may change on the way.
class PcmCollector {
public:
    // What comes from here on; both at least 1.
    void setFormat(std::uint32_t channels, std::uint32_t samplesPerSecond);

    // Bytes as they come, in pieces of any size.
    void append(std::span<const std::byte> bytes);

    // Everything so far; leaves the collector empty.
    std::vector<std::int16_t> take();

private:
    void convert();

    std::uint32_t channelCount = 1;
    std::uint32_t rate = 48000;     // samples a second
    std::vector<std::byte> pending; // in the format above, not yet converted
    std::vector<std::int16_t> result;
};

} // namespace dunkman
