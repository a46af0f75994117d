#include "audio/sound.h"

#include <new>
#include <string>

#include "audio/decode.h"
#include "audio/fed_ring.h"
#include "audio/music_track.h"
#include "audio/music_writer.h"
#include "base/debug_output.h"

namespace dunkman {

AudioRing* fedRing = nullptr;

namespace {

// The show goes on without a piece for which there is no room: hours of music are gigabytes of samples.
MusicTrack decodeIfItFits(const wchar_t* path, const char* name) {
    try {
        return decodeMusic(path);
    } catch (const std::bad_alloc&) {
        debugText(std::string("audio: not enough memory for ") + name + ": no music from it");
        return {};
    }
}

} // namespace

void loadMusicTracks() {
    writable::music.gameTrack = decodeIfItFits(L"zombiegame.mp3", "zombiegame.mp3");
    writable::music.gameTrack.loop = true;
    writable::music.introTrack = decodeIfItFits(L"intro.mp3", "intro.mp3");
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
