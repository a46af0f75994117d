#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <windows.h>

#include "app/process_end.h"
#include "audio/fed_ring.h"
#include "audio/music_writer.h"
#include "audio/sound.h"
#include "platform/platform.h"

// Ends while sound plays, as the show does. Where in the device's rhythm the process ends decides whether it ends well, so
// this is run again and again, with another time each (tools/soak).
//   sound-end [MICROSECONDS]     0.2 seconds of sound and so much more; exit status 0, or 2: no sound here
int main(int count, char** arguments) {
    using namespace dunkman;
    const std::int64_t more = count > 1 ? std::atoll(arguments[1]) : 0;
    startAudio();
    writable::music.gameTrack.samples.assign(48000, 100);
    writable::music.gameTrack.loop = true;
    selectMusic(MusicSelection::Game);
    for (int step = 0; step < 20; ++step) {
        feedAudio();
        Sleep(10);
    }
    if (fedRing == nullptr || fedRing->counters().readPosition == 0) {
        std::puts("no device takes sound here");
        return 2;
    }
    const std::int64_t start = platform::clockNanoseconds();
    while (platform::clockNanoseconds() - start < more * 1000) {
    }
    endProcess(0);
}
