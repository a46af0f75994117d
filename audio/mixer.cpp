#include "audio/mixer.h"

#include <algorithm>

namespace dunkman {

namespace {

constexpr float sampleScale = 3.0517578125e-05f; // 2^-15

// One straight run without a wrap: nothing in the loop depends on the turn before, so compilers vectorise it.
void mixRun(float* destination, const std::int16_t* samples, std::uint64_t frames, float volume) {
    for (std::uint64_t frame = 0; frame < frames; ++frame) {
        const float value = static_cast<float>(samples[frame]) * sampleScale * volume;
        destination[2 * frame] += value;
        destination[2 * frame + 1] += value;
    }
}

} // namespace

void mixTrackFrom(float* destination, std::uint32_t frames, float volume, const MusicTrack& track,
                  std::uint64_t start) {
    const std::uint64_t count = track.frameCount();
    std::uint64_t cursor = start;
    std::uint64_t left = frames;
    while (left > 0 && count > 0) {
        if (cursor >= count) {
            if (!track.loop) {
                return;
            }
            cursor = 0;
        }
        const std::uint64_t run = std::min(left, count - cursor);
        mixRun(destination, track.samples.data() + cursor, run, volume);
        destination += 2 * run;
        cursor += run;
        left -= run;
    }
}

void mixTrack(float* destination, std::uint32_t frames, float volume, const MusicTrack& track) {
    mixTrackFrom(destination, frames, volume, track, track.position);
}

} // namespace dunkman
