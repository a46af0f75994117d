#include "platform/window_win32.h"

#include <imm.h>

namespace dunkman::platform {

namespace {

static_assert(messages::eraseBackground == WM_ERASEBKGND && messages::contextMenu == WM_CONTEXTMENU &&
              messages::startComposition == WM_IME_STARTCOMPOSITION &&
              messages::endComposition == WM_IME_ENDCOMPOSITION &&
              messages::composition == WM_IME_COMPOSITION && messages::systemCommand == WM_SYSCOMMAND &&
              messages::dropFiles == WM_DROPFILES && messages::setInputContext == WM_IME_SETCONTEXT);
static_assert(system_commands::size == SC_SIZE && system_commands::move == SC_MOVE &&
              system_commands::close == SC_CLOSE && system_commands::mouseMenu == SC_MOUSEMENU &&
              system_commands::keyMenu == SC_KEYMENU && system_commands::screenSave == SC_SCREENSAVE &&
              system_commands::monitorPower == SC_MONITORPOWER);

// The predefined window class that start-up uses; the program registers none of its own.
constexpr WORD editClassAtom = 0xC018;

HWND create(const char* windowClass) {
    return CreateWindowExA(0, windowClass, nullptr, WS_POPUP | WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT, 1920,
                           1080, nullptr, nullptr, nullptr, nullptr);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = ownAnswer(message, wParam)) {
        return *answer;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

Area areaOf(const RECT& rectangle) {
    return {rectangle.left, rectangle.top, rectangle.right - rectangle.left,
            rectangle.bottom - rectangle.top};
}

// From here on nothing of the class is left but its name.
void makeOwn(HWND window) {
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    DestroyCaret();                       // an edit field makes one as soon as it has the keyboard
    ImmAssociateContext(window, nullptr); // keys are keys, not the beginnings of characters
    const HDC deviceContext = GetDC(window);
    const Area area = displayOf(window);
    PatBlt(deviceContext, 0, 0, area.width, area.height, BLACKNESS); // it has been erased to white
    ReleaseDC(window, deviceContext);
}

void cover(HWND window) {
    RECT rectangle = {};
    GetWindowRect(window, &rectangle);
    if (const auto area = areaToTake(areaOf(rectangle), displayOf(window))) {
        SetWindowPos(window, HWND_TOP, area->left, area->top, area->width, area->height, 0);
    }
}

} // namespace

HWND openGameWindow() {
    HWND window = create(MAKEINTATOM(editClassAtom));
    if (window == nullptr) {
        // Where the atom is unknown, the class that it names on Windows still is there under its name.
        window = create("Edit");
    }
    if (window != nullptr) {
        makeOwn(window);
        cover(window);
        SetForegroundWindow(window);
    }
    return window;
}

Area displayOf(HWND window) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return areaOf(monitor.rcMonitor);
}

} // namespace dunkman::platform
