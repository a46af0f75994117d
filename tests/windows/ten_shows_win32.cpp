// The show, played through again and again in one process, each time from start-up to the step in which the game would end
// its process, to see that nothing of it stays behind: the game's own code with its real window, OpenGL and sound. Only
// the clock is a film's, three steps a turn of the loop, so that no time is spent on waiting; and window and context, which
// the game leaves to the end of its process, are those of the first time.
//   ten-shows.exe [SHOWS [WIDTH HEIGHT]]      10 shows in a window of 320 by 180
// Prints for each entry of a screen "show N screen NAME live BYTES given BYTES", and at last "grown BYTES, given BYTES": how
// much more the last show had on a screen than the second, at the most. Live is what is in use on the heaps of the Windows
// side, the game's among them; given, what the system has given the process for itself alone, in which under Wine are the
// driver, the decoder and the sound client as well. Exit status 1 when what is live has grown by more than 256 KB.

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "app/reset.h"
#include "platform/platform.h"
#include "platform/platform_win32.h"
#include "screens/screen.h"

namespace {

constexpr std::int64_t mostGrowth = 256 << 10; // bytes: no picture, no piece, no screen

struct ShowIsOver {};

std::int64_t filmNanoseconds = 0;
bool hasWindow = false;
int width = 320;
int height = 180;

} // namespace

// What the linker, told to wrap them, takes in place of the functions of dunkman::platform of these names, and what those
// are called then.
// NOLINTBEGIN(readability-identifier-naming,bugprone-reserved-identifier)
extern "C" {
std::int64_t __wrap__ZN7dunkman8platform16clockNanosecondsEv() { return filmNanoseconds; }

void __wrap__ZN7dunkman8platform11exitProcessEi(int) { throw ShowIsOver(); }

void __real__ZN7dunkman8platform10openWindowEv();
void __wrap__ZN7dunkman8platform10openWindowEv() {
    if (!hasWindow) {
        __real__ZN7dunkman8platform10openWindowEv();
    }
}

void __real__ZN7dunkman8platform15createGlContextEv();
void __wrap__ZN7dunkman8platform15createGlContextEv() {
    if (!hasWindow) {
        __real__ZN7dunkman8platform15createGlContextEv();
        SetWindowPos(WindowFromDC(wglGetCurrentDC()), nullptr, 0, 0, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        hasWindow = true;
    }
}
}
// NOLINTEND(readability-identifier-naming,bugprone-reserved-identifier)

namespace dunkman::platform {

// The game ends with its process and has no use for this.
void resetMachine() { ShowWindow(WindowFromDC(wglGetCurrentDC()), SW_SHOWNA); }

} // namespace dunkman::platform

namespace {

using namespace dunkman;

struct Weight {
    std::size_t live = 0; // bytes in use on all heaps of the Windows side: the game's own and its libraries'
    std::size_t given =
        0; // bytes that the process has been given for itself alone, those of the driver included
};

using Weights = std::map<std::string, Weight, std::less<>>; // by screen

std::size_t liveBytes() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 8);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    std::size_t live = 0;
    for (const HANDLE heap : heaps) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heap, &entry) != FALSE) {
            live += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heap);
    }
    return live;
}

std::size_t givenBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters = {};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return std::max(counters.PrivateUsage, counters.PagefileUsage); // Wine knows the second only
}

Weight weigh() {
    const Weight weight = {liveBytes(), givenBytes()};
    if (weight.live == 0 || weight.given == 0) {
        throw std::runtime_error("the system does not tell how much memory the process has");
    }
    return weight;
}

Weights playShow(int number) {
    Weights weights;
    const GameScreenBase* last = nullptr;
    filmNanoseconds = 0;
    startUp(InputMode::Replay);
    try {
        while (true) {
            if (screenState.currentScreen != last) {
                last = screenState.currentScreen;
                const std::string name(screenName(last));
                const Weight weight = weigh();
                weights[name] = weight;
                std::printf("show %d screen %s live %llu given %llu\n", number, name.c_str(),
                            static_cast<unsigned long long>(weight.live),
                            static_cast<unsigned long long>(weight.given));
                std::fflush(stdout);
            }
            filmNanoseconds += 50000001; // just over three steps
            if (runIteration() != LoopEnd::GoOn) {
                std::printf("the loop ended before the show\n");
                std::exit(1);
            }
        }
    } catch (const ShowIsOver&) {
        weights["the end"] = weigh();
    }
    shutDown();
    resetProgram();
    return weights;
}

// How much more the last show had on a screen than the second, at the most.
std::int64_t growth(const std::vector<Weights>& shows, std::size_t Weight::*which) {
    std::int64_t most = 0;
    for (const auto& [screen, weight] : shows[1]) {
        most = std::max(most, static_cast<std::int64_t>(shows.back().at(screen).*which) -
                                  static_cast<std::int64_t>(weight.*which));
    }
    return most;
}

} // namespace

int main(int count, char** arguments) {
    const int shows = std::max(count > 1 ? std::atoi(arguments[1]) : 10, 3);
    if (count > 3) {
        width = std::atoi(arguments[2]);
        height = std::atoi(arguments[3]);
    }
    platform::useRealPixels();
    try {
        std::vector<Weights> weights;
        for (int number = 1; number <= shows; ++number) {
            weights.push_back(playShow(number));
        }
        const std::int64_t grown = growth(weights, &Weight::live);
        std::printf("grown %lld, given %lld\n", static_cast<long long>(grown),
                    static_cast<long long>(growth(weights, &Weight::given)));
        return grown > mostGrowth ? 1 : 0;
    } catch (const std::exception& error) {
        std::printf("fatal %s\n", error.what());
        return 1;
    }
}
