#include "audio/sound.h"

#include "audio/decode.h"
#include "audio/fed_ring.h"
#include "audio/music_selection.h"
#include "audio/music_track.h"

namespace dunkman {

AudioRing* fedRing = nullptr;

void loadMusicTracks() {
    gameTrack = decodeMusic(L"zombiegame.mp3");
    gameTrack.loop = true;
    introTrack = decodeMusic(L"intro.mp3");
    introTrack.position = 0;
}

void feedAudio() {
    if (fedRing != nullptr) {
        fedRing->feed(selectedTrack());
    }
}

void resetAudio() {
    stopAudio();
    gameTrack = {};
    introTrack = {};
    musicSelection = MusicSelection::None;
}

} // namespace dunkman
