// Plays the game's music without the game: for listening, and for measuring what reaches the sound device. See `usage`.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

#include "audio/fed_ring.h"
#include "audio/music.h"
#include "audio/music_track.h"
#include "audio/sound.h"
#include "base/debug_output.h"
#include "tools/console/about.h"

namespace {

constexpr const char* usage =
    "sound-player [INTRO_SECONDS [GAME_SECONDS [STEPS_PER_SECOND [RUNS]]]]\n"
    "Plays the game's music without the game (5 and 10 seconds, fed 60 times a second, once) and measures "
    "what reaches\n"
    "the sound device. Reads intro.mp3 and zombiegame.mp3 in the working directory, as the game does.\n"
    "sound-player --help | --version\n";

using Clock = std::chrono::steady_clock;

const Clock::time_point programStart = Clock::now();

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void say(std::string_view text) {
    std::printf("%8.3f %.*s\n", secondsSince(programStart), static_cast<int>(text.size()), text.data());
    std::fflush(stdout);
}

double argumentOr(int count, char** arguments, int index, double otherwise) {
    return index < count ? std::atof(arguments[index]) : otherwise;
}

// Feeds as the game's main loop does, and tells of its own stalls: after 100 ms the device has nothing to
// play.
void play(double seconds, double stepsPerSecond) {
    const auto start = Clock::now();
    const auto step =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / stepsPerSecond));
    auto lastFeed = start;
    for (auto next = start; secondsSince(start) < seconds; next += step) {
        std::this_thread::sleep_until(next);
        if (const double gap = secondsSince(lastFeed); gap > 0.1) {
            std::printf("fed after %.0f ms\n", 1000.0 * gap);
        }
        lastFeed = Clock::now();
        dunkman::feedAudio();
    }
}

} // namespace

// The debugger output of this program.
void dunkman::debugText(std::string_view line) { say(line); }

int main(int count, char** arguments) {
    using namespace dunkman;
    if (console::tellAbout(count, arguments, "sound-player", usage)) {
        return 0;
    }
    const double introSeconds = argumentOr(count, arguments, 1, 5.0);
    const double gameSeconds = argumentOr(count, arguments, 2, 10.0);
    const double stepsPerSecond = argumentOr(count, arguments, 3, 60.0);
    const int runs = static_cast<int>(argumentOr(count, arguments, 4, 1.0));
    for (int run = 0; run < runs; ++run) {
        auto start = Clock::now();
        startAudio();
        const auto audioStart = Clock::now();
        std::printf("start took %.1f ms, %s\n", 1000.0 * secondsSince(start), fedRing ? "sound" : "no sound");
        start = Clock::now();
        loadMusicTracks();
        std::printf("decoding took %.1f ms: game %.3f s, intro %.3f s\n", 1000.0 * secondsSince(start),
                    static_cast<double>(music.gameTrack.frameCount()) / 48000.0,
                    static_cast<double>(music.introTrack.frameCount()) / 48000.0);
        feedAudio(); // the time spent on decoding is none of the music's
        say("screen Intro");
        selectMusic(MusicSelection::Intro);
        play(introSeconds, stepsPerSecond);
        say("screen Menu");
        selectMusic(MusicSelection::Game);
        play(gameSeconds, stepsPerSecond);
        std::printf("positions: intro %.3f s, game %.3f s\n",
                    static_cast<double>(music.introTrack.position) / 48000.0,
                    static_cast<double>(music.gameTrack.position) / 48000.0);
        if (fedRing != nullptr) {
            // Since the start: what the device took of the ring, beside the time that has passed.
            std::printf("device took %.3f s of sound in %.3f s\n",
                        static_cast<double>(fedRing->counters().readPosition) / AudioRing::bytesPerFrame /
                            48000.0,
                        secondsSince(audioStart));
        }
        start = Clock::now();
        stopAudio();
        std::printf("stop took %.1f ms\n", 1000.0 * secondsSince(start));
        selectMusic(MusicSelection::None);
    }
    finishAudio();
    return 0;
}
