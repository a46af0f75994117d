#include "audio/music_track.h"

#include "audio/music_selection.h"

namespace dunkman {

MusicSelection musicSelection = MusicSelection::None;
MusicTrack gameTrack;
MusicTrack introTrack;

std::uint64_t MusicTrack::positionAfter(std::uint64_t frames) const {
    const std::uint64_t count = frameCount();
    const std::uint64_t target = position + frames;
    if (loop) {
        return count == 0 ? 0 : target % count;
    }
    return target >= count ? count : target;
}

void MusicTrack::advance(std::uint64_t frames) { position = positionAfter(frames); }

MusicTrack* selectedTrack() {
    switch (musicSelection) {
    case MusicSelection::Intro:
        return &introTrack;
    case MusicSelection::Game:
        return &gameTrack;
    case MusicSelection::None:
        break;
    }
    return nullptr;
}

} // namespace dunkman
