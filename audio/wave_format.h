#pragma once

#include <array>
#include <cstdint>

namespace dunkman {

// The system's extensible wave format, 40 bytes, spelt out so that it can be built and tested anywhere.
struct WaveFormat {
    std::uint16_t formatTag;
    std::uint16_t channels;
    std::uint32_t samplesPerSecond;
    std::uint32_t averageBytesPerSecond;
    std::uint16_t blockAlign; // bytes a frame
    std::uint16_t bitsPerSample;
    std::uint16_t extraBytes; // behind this field
    std::uint16_t validBitsPerSample;
    std::uint32_t channelMask;
    std::uint32_t subFormat; // start of the sub-type GUID; the rest is the same for all wave sub-types
    std::uint16_t subFormatWords[2] = {0x0000, 0x0010};
    std::uint8_t subFormatBytes[8] = {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};
};
static_assert(sizeof(WaveFormat) == 40);

inline constexpr std::uint16_t extensibleTag = 0xFFFE;
inline constexpr std::uint32_t pcmSubFormat = 1;
inline constexpr std::uint32_t floatSubFormat = 3;

// What the output stream is opened with: 32-bit float stereo (front left, front right) at 48 kHz.
inline constexpr WaveFormat streamFormat = {extensibleTag, 2, 48000, 384000, 8, 32, 22, 32, 3,
                                            floatSubFormat};

// What the decoder is asked for: 16-bit mono (front centre) at 48 kHz.
inline constexpr WaveFormat decodedFormat = {extensibleTag, 1, 48000, 96000, 2, 16, 22, 16, 4, pcmSubFormat};

} // namespace dunkman
