// The game with a Windows that refuses: one call of start-up fails, once, and what comes of it is told.
//   start-faults.exe                   prints the names of the functions that can fail
//   start-faults.exe FUNCTION NUMBER   that call of it fails, the first being 1
// Prints "called N" (how often the function was called until the end of start-up), and "played" after ten turns of the loop
// or "told MESSAGE", in one line, when the game ended with a message.

#include <windows.h>

#include <imm.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

#include "app/lifecycle.h"
#include "app/main_loop.h"
#include "base/fatal.h"

namespace {

std::string failing;
int failingCall = 0;
int calls = 0;

bool fails(std::string_view name) { return name == failing && ++calls == failingCall; }

FARPROC find(const char* library, const char* name) {
    return GetProcAddress(LoadLibraryW(std::wstring(library, library + std::strlen(library)).c_str()), name);
}

// What stands in the place of a function of Windows; Tag is a type of its own for each.
template <class Tag, class Function> struct Fallible;
template <class Tag, class Result, class... Parameters> struct Fallible<Tag, Result(WINAPI*)(Parameters...)> {
    static Result WINAPI call(Parameters... parameters) {
        static const auto real = reinterpret_cast<Result(WINAPI*)(Parameters...)>(
            reinterpret_cast<void*>(find(Tag::library, Tag::name)));
        return fails(Tag::name) ? static_cast<Result>(Tag::failure()) : real(parameters...);
    }
};

#define FALLIBLE(libraryName, functionName, failureValue)                                                    \
    struct Tag_##functionName {                                                                              \
        static constexpr const char* library = #libraryName ".dll";                                          \
        static constexpr const char* name = #functionName;                                                   \
        static auto failure() { return failureValue; }                                                       \
    };
#include "tests/windows/fallible_functions.inc"
#undef FALLIBLE

} // namespace

// What the linker takes in place of the imports.
#define FALLIBLE(library, name, failure)                                                                     \
    decltype(&::name) __imp_##name = Fallible<Tag_##name, decltype(&::name)>::call;
extern "C" {
#include "tests/windows/fallible_functions.inc"
}
#undef FALLIBLE

int main(int count, char** arguments) {
    using namespace dunkman;
    if (count < 3) {
#define FALLIBLE(library, name, failure) std::puts(#name);
#include "tests/windows/fallible_functions.inc"
        return 0;
    }
    failing = arguments[1];
    failingCall = std::atoi(arguments[2]);
    try {
        startUp(InputMode::Replay);
        std::printf("called %d\n", calls);
        for (int turn = 0; turn < 10; ++turn) {
            runIteration();
        }
        std::puts("played");
        shutDown();
    } catch (const std::exception& fault) {
        std::string message = faultMessage(fault);
        std::replace(message.begin(), message.end(), '\n', ' ');
        std::printf("called %d\ntold %s\n", calls, message.c_str());
    }
    return 0;
}
