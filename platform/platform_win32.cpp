#include "platform/platform_win32.h"
#include "platform/platform.h"

#include <windows.h>
#include <xmmintrin.h>

#include <chrono>
#include <string>

#include "base/debug_output.h"
#include "base/fatal.h"
#include "base/wide_text_win32.h"
#include "platform/canvas.h"
#include "platform/software_gl.h"
#include "platform/unpacked_textures.h"
#include "platform/window_win32.h"
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

std::int64_t ticksOf(const FILETIME& time) {
    return static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
}

} // namespace

std::string programFolder() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::size_t nameAt = path.find_last_of(L'\\');
    path.resize(nameAt == std::wstring::npos ? 0 : nameAt);
    if (path.ends_with(L':')) {
        path += L'\\'; // without it, the working directory of that drive
    }
    return utf8Text(path);
}

std::int64_t processAgeNanoseconds() {
    FILETIME created = {};
    FILETIME ended = {};
    FILETIME inKernel = {};
    FILETIME inProgram = {};
    if (GetProcessTimes(GetCurrentProcess(), &created, &ended, &inKernel, &inProgram) == FALSE) {
        return 0;
    }
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    constexpr std::int64_t nanosecondsPerTick = 100;
    return (ticksOf(now) - ticksOf(created)) * nanosecondsPerTick;
}

void switchDisplayMode() {
    DEVMODEA mode = {};
    mode.dmSize = sizeof mode;
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    mode.dmBitsPerPel = 32;
    mode.dmPelsWidth = screenWidth;
    mode.dmPelsHeight = screenHeight;
    ChangeDisplaySettingsA(&mode, CDS_FULLSCREEN);
    // Nobody needs to touch a key for the whole show; the display must not go dark over it.
    SetThreadExecutionState(ES_CONTINUOUS | ES_DISPLAY_REQUIRED | ES_SYSTEM_REQUIRED);
}

void restoreDesktop() {
    if (window != nullptr) {
        ShowWindow(window, SW_HIDE);
    }
    ChangeDisplaySettingsA(nullptr, 0);
    SetThreadExecutionState(ES_CONTINUOUS);
}

void resetArithmetic() { _mm_setcsr(0x1F80); } // round to nearest, no flush to zero, no exception trapped

void openWindow() { window = openGameWindow(); }

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
    dunkman::loadGlFunctions(lookUpInSystemLibrary, askDriver);
    unpackTexturesInSoftware(askDriver, lookUpInSystemLibrary);
    keepMemoryInSoftware(lookUpInSystemLibrary);
    canvas.load(askDriver, lookUpInSystemLibrary);
    clientSize(); // gives the canvas its size
}

bool drawsInSoftware() { return isGlDoneInSoftware(lookUpInSystemLibrary); }

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

void keepPicture() { canvas.keep(); }
bool bringPictureBack() { return canvas.bringBack(); }

void exitProcess(int status) { ExitProcess(static_cast<UINT>(status)); }

void useRealPixels() { SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2); }

void showNotice(const std::string& message) {
    debugText("notice: " + message);
    ShowCursor(TRUE);
    MessageBoxW(nullptr, wideText(message).c_str(), L"Dunkman",
                MB_OK | MB_ICONINFORMATION | MB_SETFOREGROUND);
}

void showFatalMessage(const std::string& message) {
    debugText("fatal: " + message);
    restoreDesktop();
    ShowCursor(TRUE);
    MessageBoxW(nullptr, wideText(message).c_str(), L"Dunkman", MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
}

} // namespace platform

} // namespace dunkman
