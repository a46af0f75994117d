// The game as it is, but with the clock of a film: each turn of the loop is one step of the show. Stands still at steps that
// are asked for, so that their pictures can be taken off the screen and held against those of the off-screen machine.
//   frame-probe.exe SCREEN STEP...
// SCREEN is the screen entered after start-up; steps count from 0, ascending. Prints "shown STEP" when that step is on the
// screen, and waits for a line on standard input.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "platform/platform.h"
#include "platform/platform_win32.h"
#include "render/discard.h"
#include "screens/screen.h"

namespace {

std::int64_t filmNanoseconds = 0;

} // namespace

// What the linker, told to wrap it, takes in place of dunkman::platform::clockNanoseconds.
// NOLINTNEXTLINE(readability-identifier-naming,bugprone-reserved-identifier)
extern "C" std::int64_t __wrap__ZN7dunkman8platform16clockNanosecondsEv() { return filmNanoseconds; }

namespace {

using namespace dunkman;

void iterate() {
    filmNanoseconds += 16666667; // just over 1/60 s
    runIteration();
}

void show(long step, long next) {
    {
        const PixelsDiscarded unseen;
        for (; next < step; ++next) {
            iterate();
        }
    }
    iterate();
    std::printf("shown %ld\n", step);
    std::fflush(stdout);
    for (int letter = std::getchar(); letter != '\n' && letter != EOF;) {
        letter = std::getchar();
    }
}

} // namespace

int main(int count, char** arguments) {
    ScreenId screen = ScreenId::Loading;
    if (count < 3 || !findScreen(arguments[1], screen)) {
        return 2;
    }
    platform::useRealPixels();
    try {
        startUp(InputMode::Replay, screen);
        long next = 0;
        for (int i = 2; i < count; ++i) {
            const long step = std::atol(arguments[i]);
            show(step, next);
            next = step + 1;
        }
        shutDown();
    } catch (const std::exception& error) {
        std::printf("fatal %s\n", error.what());
        return 1;
    }
    return 0;
}
