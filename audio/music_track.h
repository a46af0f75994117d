#pragma once

#include <cstdint>
#include <vector>

namespace dunkman {

// A piece of music, decoded completely: mono, 48,000 samples a second.
struct MusicTrack {
    std::vector<std::int16_t> samples;
    std::uint64_t position = 0; // next sample to be heard; frameCount() means at the end
    bool loop = false;          // whether playback goes on at 0 behind the last sample, or stays at the end

    std::uint64_t frameCount() const { return samples.size(); }

    // Moves the position by `frames` that the listener has heard, or would have heard had the device had
    // them. A looping track wraps (and stays at 0 if it has no samples), any other stays at its end.
    void advance(std::uint32_t frames);

    // The sample that is due `frames` after `position`, by the same rules; frameCount() at the end.
    std::uint64_t positionAfter(std::int64_t frames) const;
};

} // namespace dunkman
