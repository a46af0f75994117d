#include "audio/music_writer.h"

namespace dunkman {

Music writable::music;
constinit const Music& music = writable::music;

void selectMusic(MusicSelection selection) { writable::music.musicSelection = selection; }

MusicTrack* selectedTrack() {
    switch (music.musicSelection) {
    case MusicSelection::Intro:
        return &writable::music.introTrack;
    case MusicSelection::Game:
        return &writable::music.gameTrack;
    case MusicSelection::None:
        break;
    }
    return nullptr;
}

} // namespace dunkman
