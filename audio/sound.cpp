#include "audio/sound.h"

#include "audio/decode.h"
#include "audio/fed_ring.h"
#include "audio/music_track.h"
#include "audio/music_writer.h"

namespace dunkman {

AudioRing* fedRing = nullptr;

void loadMusicTracks() {
    writable::music.gameTrack = decodeMusic(L"zombiegame.mp3");
    writable::music.gameTrack.loop = true;
    writable::music.introTrack = decodeMusic(L"intro.mp3");
    writable::music.introTrack.position = 0;
}

void feedAudio() {
    if (fedRing != nullptr) {
        fedRing->feed(selectedTrack());
    }
}

void resetAudio() {
    stopAudio();
    writable::music = {};
}

} // namespace dunkman
