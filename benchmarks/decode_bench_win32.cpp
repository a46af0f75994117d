// Times the decoding of both pieces of music through Media Foundation. A program for itself, since the
// measured thing only exists on Windows. Run it in data/, and beside it a decoder of another make:
//   ffmpeg -benchmark -v info -i zombiegame.mp3 -f null -    ("rtime")
//   mpg123 -q -t zombiegame.mp3

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "audio/decode.h"
#include "base/debug_output.h"
#include "tools/console/about.h"

void dunkman::debugText(std::string_view line) {
    std::printf("%.*s\n", static_cast<int>(line.size()), line.data());
}

int main(int count, char** arguments) {
    constexpr const char* usage =
        "decode-bench      times the decoding of the music in the working directory\n"
        "decode-bench --help | --version\n";
    if (dunkman::console::tellAbout(count, arguments, "decode-bench", usage)) {
        return 0;
    }
    constexpr int rounds = 7;
    for (const wchar_t* const path : {L"zombiegame.mp3", L"intro.mp3"}) {
        std::vector<double> milliseconds;
        double seconds = 0.0;
        for (int round = 0; round < rounds; ++round) {
            const auto start = std::chrono::steady_clock::now();
            const dunkman::MusicTrack track = dunkman::decodeMusic(path);
            const auto end = std::chrono::steady_clock::now();
            milliseconds.push_back(std::chrono::duration<double, std::milli>(end - start).count());
            seconds = static_cast<double>(track.frameCount()) / 48000.0;
        }
        const double first = milliseconds.front();
        std::sort(milliseconds.begin(), milliseconds.end());
        std::printf("%ls: %.2f s of music; first %.1f ms, best %.1f ms, median %.1f ms\n", path, seconds,
                    first, milliseconds.front(), milliseconds[rounds / 2]);
    }
    return 0;
}
