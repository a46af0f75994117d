// Gives the window of a running program another size, as any other program may on Windows:
// see `usage`.
//
// Asked from the display's side instead (by X, under Wine), a window that fills its screen takes no other
// size under Wine 10.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tools/console/about.h"

namespace {

constexpr const char* usage =
    "resize-window PROGRAM.exe WIDTHxHEIGHT [SECONDS]\n"
    "Waits SECONDS (60) at the most for the window of that program to come up and to take the size, in "
    "pixels of its\n"
    "client area. Exit status: 0 when it has that size, 1 when not, 2 for wrong arguments.\n"
    "resize-window --help | --version\n";

constexpr DWORD longestPath = 32768;

struct Search {
    std::string program; // its file name, without a folder
    HWND window = nullptr;
};

std::string fileNameOf(DWORD process) {
    const HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    if (handle == nullptr) {
        return {};
    }
    std::string path(longestPath, '\0');
    DWORD length = longestPath;
    if (QueryFullProcessImageNameA(handle, 0, path.data(), &length) == FALSE) {
        length = 0;
    }
    CloseHandle(handle);
    path.resize(length);
    return path.substr(path.find_last_of('\\') + 1);
}

BOOL CALLBACK takeIfWanted(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (IsWindowVisible(window) == FALSE ||
        lstrcmpiA(fileNameOf(process).c_str(), search.program.c_str()) != 0) {
        return TRUE;
    }
    search.window = window;
    return FALSE;
}

bool hasSize(HWND window, int width, int height) {
    RECT client = {};
    return GetClientRect(window, &client) != FALSE && client.right == width && client.bottom == height;
}

} // namespace

int main(int count, char** arguments) {
    if (dunkman::console::tellAbout(count, arguments, "resize-window", usage)) {
        return 0;
    }
    int width = 0;
    int height = 0;
    if (count < 3 || std::sscanf(arguments[2], "%dx%d", &width, &height) != 2 || width < 1 || height < 1) {
        std::fputs(usage, stderr);
        return 2;
    }
    const ULONGLONG patience = 1000 * (count > 3 ? std::strtoull(arguments[3], nullptr, 10) : 60);
    const ULONGLONG began = GetTickCount64();
    Search search = {arguments[1]};
    do {
        search.window = nullptr;
        EnumWindows(takeIfWanted, reinterpret_cast<LPARAM>(&search));
        if (search.window != nullptr && hasSize(search.window, width, height)) {
            return 0;
        }
        if (search.window != nullptr) {
            // Asynchronous: a program that is busy loading takes it when it looks at its messages again.
            SetWindowPos(search.window, nullptr, 0, 0, width, height,
                         SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
        }
        Sleep(100);
    } while (GetTickCount64() - began < patience);
    std::fprintf(stderr, "resize-window: %s\n",
                 search.window == nullptr ? "no such window" : "the size is not taken");
    return 1;
}
