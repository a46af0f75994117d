// The game as it is, with two onlookers: one counts its steps, the other stands where the system's SwapBuffers is. That
// one sees what is about to be shown, and paints over the back buffer after each swap, as a driver may that flips.
//   show-probe.exe live|replay ITERATIONS_PER_SECOND [measure]
// Prints "steps N swaps N idle N unpainted N" each second: idle are swaps without a step since the last one, unpainted
// those that showed the paint. With "measure" also "frame N copy N": milliseconds of drawing a frame, and of copying it
// to the window once more.

#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "app/frame.h"
#include "app/lifecycle.h"
#include "platform/platform.h"
#include "platform/platform_win32.h"
#include "render/gl.h"
#include "render/gl_loader.h"

namespace dunkman {
namespace {

class StepCounter final : public FrameObserver {
public:
    void updated() override { ++steps; }

    long steps = 0;
};

StepCounter counter;
DWORD iterationMilliseconds = 0;
long swaps = 0;
long idleSwaps = 0;
long unpaintedSwaps = 0;
long stepsAtLastSwap = 0;
bool measures = false;
double frameMilliseconds = 0.0; // of all swaps
double copyMilliseconds = 0.0;

double millisecondsNow() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

constexpr GLenum readFramebuffer = 0x8CA8; // GL_READ_FRAMEBUFFER
constexpr GLenum readFramebufferBinding = 0x8CAA;
constexpr GLenum colour = 0x1800; // GL_COLOR
constexpr GLenum rgb = 0x1907;    // GL_RGB

struct Painter {
    void (*readPixels)(GLint x, GLint y, GLsizei width, GLsizei height, GLenum format, GLenum type,
                       void* pixels);
    void (*getInteger)(GLenum name, GLint* value);
    void (*bindFramebuffer)(GLenum target, GLuint name);
    void (*clearNamedFramebuffer)(GLuint name, GLenum buffer, GLint drawBuffer, const GLfloat* value);

    void (*finish)();
    void (*blit)(GLuint from, GLuint to, GLint, GLint, GLint width, GLint height, GLint, GLint, GLint toWidth,
                 GLint toHeight, GLbitfield mask, GLenum filter);

    Painter() {
        find(finish, lookUpInSystemLibrary("glFinish"));
        find(blit, askDriver("glBlitNamedFramebuffer"));
        find(readPixels, lookUpInSystemLibrary("glReadPixels"));
        find(getInteger, lookUpInSystemLibrary("glGetIntegerv"));
        find(bindFramebuffer, askDriver("glBindFramebuffer"));
        find(clearNamedFramebuffer, askDriver("glClearNamedFramebufferfv"));
    }

    template <typename Function> static void find(Function*& pointer, GlFunction answer) {
        pointer = reinterpret_cast<Function*>(answer);
    }

    // Magenta, which no picture of the game has in its corners and its middle.
    void paint() const {
        const GLfloat magenta[] = {1.0f, 0.0f, 1.0f, 1.0f};
        clearNamedFramebuffer(0, colour, 0, magenta);
    }

    // What the game has just done, once more.
    void copyAgain() const {
        GLint canvas = 0;
        getInteger(0x8CA6, &canvas); // GL_DRAW_FRAMEBUFFER_BINDING
        const platform::ClientSize size = platform::clientSize();
        const GLint width = static_cast<GLint>(size.width);
        const GLint height = static_cast<GLint>(size.height);
        blit(static_cast<GLuint>(canvas), 0, 0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT,
             0x2600);
    }

    bool seesPaint() const {
        GLint bound = 0;
        getInteger(readFramebufferBinding, &bound);
        bindFramebuffer(readFramebuffer, 0);
        const platform::ClientSize size = platform::clientSize();
        const GLint width = static_cast<GLint>(size.width);
        const GLint height = static_cast<GLint>(size.height);
        const GLint places[][2] = {
            {0, 0}, {width - 1, 0}, {0, height - 1}, {width - 1, height - 1}, {width / 2, height / 2}};
        bool found = false;
        for (const auto& place : places) {
            unsigned char pixel[4] = {};
            readPixels(place[0], place[1], 1, 1, rgb, GL_UNSIGNED_BYTE, pixel);
            found = found || (pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 255);
        }
        bindFramebuffer(readFramebuffer, static_cast<GLuint>(bound));
        return found;
    }
};

void report() {
    static ULONGLONG last = 0;
    if (GetTickCount64() - last >= 1000) {
        last = GetTickCount64();
        std::printf("steps %ld swaps %ld idle %ld unpainted %ld\n", counter.steps, swaps, idleSwaps,
                    unpaintedSwaps);
        if (measures) {
            const double frames = static_cast<double>(swaps);
            std::printf("frame %.3f copy %.3f\n", frameMilliseconds / frames, copyMilliseconds / frames);
        }
        std::fflush(stdout);
    }
}

BOOL WINAPI watchedSwap(HDC deviceContext) {
    static const Painter painter;
    using Swap = BOOL(WINAPI*)(HDC);
    static const auto swap = reinterpret_cast<Swap>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("gdi32.dll"), "SwapBuffers")));
    static double begin = millisecondsNow();
    if (measures) {
        painter.finish();
        const double drawn = millisecondsNow();
        painter.copyAgain();
        painter.finish();
        frameMilliseconds += drawn - begin;
        copyMilliseconds += millisecondsNow() - drawn;
    }
    ++swaps;
    idleSwaps += counter.steps == stepsAtLastSwap ? 1 : 0;
    stepsAtLastSwap = counter.steps;
    unpaintedSwaps += painter.seesPaint() ? 1 : 0;
    const BOOL result = swap(deviceContext);
    painter.paint();
    Sleep(iterationMilliseconds); // as long as a display of that many hertz would make it wait
    report();
    begin = millisecondsNow();
    return result;
}

} // namespace
} // namespace dunkman

// What the linker takes in place of the import of gdi32.dll.
using SwapFunction = BOOL(WINAPI*)(HDC);
extern "C" {
// NOLINTNEXTLINE(readability-identifier-naming): the linker's name
SwapFunction __imp_SwapBuffers = dunkman::watchedSwap;
}

int main(int count, char** arguments) {
    using namespace dunkman;
    if (count < 3) {
        return 2;
    }
    const InputMode mode = std::string_view(arguments[1]) == "replay" ? InputMode::Replay : InputMode::Live;
    iterationMilliseconds = 1000 / static_cast<DWORD>(std::atoi(arguments[2]));
    measures = count > 3;
    frameObserver = &counter;
    platform::useRealPixels();
    try {
        runProgram(mode);
    } catch (const std::exception& error) {
        std::printf("fatal %s\n", error.what());
        return 1;
    }
    return 0;
}
