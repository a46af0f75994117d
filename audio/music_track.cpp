#include "audio/music_track.h"

#include <algorithm>

namespace dunkman {

std::uint64_t MusicTrack::positionAfter(std::int64_t frames) const {
    const auto count = static_cast<std::int64_t>(frameCount());
    const auto from = static_cast<std::int64_t>(position);
    if (loop) {
        const std::int64_t target = count == 0 ? 0 : (from % count + frames % count) % count;
        return static_cast<std::uint64_t>(target < 0 ? target + count : target);
    }
    if (from >= count) {
        return frameCount(); // nothing is left, however far back
    }
    return static_cast<std::uint64_t>(std::clamp(from + frames, std::int64_t{0}, count));
}

void MusicTrack::advance(std::uint32_t frames) { position = positionAfter(frames); }

} // namespace dunkman
