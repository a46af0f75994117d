#include "platform/platform_win32.h"
#include "platform/platform.h"

#include <windows.h>
#include <xmmintrin.h>

#include <chrono>
#include <string>

#include "base/debug_output.h"
#include "base/fatal.h"
#include "platform/canvas.h"
#include "render/gl_loader.h"

namespace dunkman {

void debugText(std::string_view line) { OutputDebugStringA((std::string(line) + '\n').c_str()); }

void debugBreak(const std::string& message) {
    debugText(message);
    if (!IsDebuggerPresent()) {
        fatal(message);
    }
    DebugBreak();
}

namespace platform {

namespace {

constexpr int screenWidth = 1920;
constexpr int screenHeight = 1080;

HWND window = nullptr;
HDC deviceContext = nullptr;
Canvas canvas;

GlFunction askDriver(const char* name) { return reinterpret_cast<GlFunction>(wglGetProcAddress(name)); }

// The predefined window class that start-up uses; the program registers none of its own.
constexpr WORD editClassAtom = 0xC018;

HWND createWindow(const char* windowClass) {
    return CreateWindowExA(0, windowClass, nullptr, WS_POPUP | WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                           screenWidth, screenHeight, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

void switchDisplayMode() {
    DEVMODEA mode = {};
    mode.dmSize = sizeof mode;
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    mode.dmBitsPerPel = 32;
    mode.dmPelsWidth = screenWidth;
    mode.dmPelsHeight = screenHeight;
    ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN);
}

void resetArithmetic() { _mm_setcsr(0x1F80); } // round to nearest, no flush to zero, no exception trapped

void openWindow() {
    window = createWindow(MAKEINTATOM(editClassAtom));
    if (window == nullptr) {
        // Where the atom is unknown, the class that it names on Windows still is there under its name.
        window = createWindow("Edit");
    }
}

void hideCursor() { ShowCursor(FALSE); }

void createGlContext() {
    deviceContext = GetDC(window);
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 32;
    format.cAlphaBits = 8;
    format.cDepthBits = 32;
    SetPixelFormat(deviceContext, ChoosePixelFormat(deviceContext, &format), &format);
    wglMakeCurrent(deviceContext, wglCreateContext(deviceContext));
}

void loadGlFunctions() {
    loadGlFunctionsFromWindows();
    canvas.load(askDriver);
    clientSize(); // gives the canvas its size
}

void setSwapInterval() {
    using SwapInterval = BOOL(WINAPI*)(int);
    const PROC address = wglGetProcAddress("wglSwapIntervalEXT");
    if (const auto swapInterval = reinterpret_cast<SwapInterval>(reinterpret_cast<void*>(address))) {
        swapInterval(1);
    }
}

bool isWindowVisible() { return IsWindowVisible(window) != FALSE; }

bool isKeyDown(std::int32_t virtualKey) { return GetAsyncKeyState(virtualKey) != 0; }

void drainMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        DefWindowProcA(message.hwnd, message.message, message.wParam, message.lParam);
    }
}

ClientSize clientSize() {
    RECT client = {};
    GetClientRect(window, &client);
    const ClientSize size = {static_cast<std::uint32_t>(client.right - client.left),
                             static_cast<std::uint32_t>(client.bottom - client.top)};
    if (size.width > 0 && size.height > 0) {
        canvas.resize(size); // before anything is drawn in the new size
    }
    return size;
}

std::int64_t clockNanoseconds() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void swapBuffers() {
    canvas.present();
    SwapBuffers(deviceContext);
}

void exitProcess(int status) { ExitProcess(static_cast<UINT>(status)); }

void showFatalMessage(const std::string& message) {
    debugText("fatal: " + message);
    ChangeDisplaySettingsA(nullptr, 0);
    if (window != nullptr) {
        ShowWindow(window, SW_HIDE);
    }
    ShowCursor(TRUE);
    MessageBoxA(nullptr, message.c_str(), "Dunkman", MB_OK | MB_ICONERROR);
}

} // namespace platform

} // namespace dunkman
