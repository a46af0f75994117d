#pragma once

#include <cstdint>
#include <string>

// What the program asks of the machine. One header, two sources, chosen at link time: the Windows one, and the
// simulated one of the headless runner, the tests and the benchmarks. No decision is taken behind it.
// Debugger output is in base/debug_output.h.
namespace dunkman::platform {

struct ClientSize {
    std::uint32_t width = 0;  // pixels
    std::uint32_t height = 0; // pixels
};

// Where the program's own file is; empty where that is not known.
std::string programFolder();

// How long ago the process was started; 0 where that is not known.
std::int64_t processAgeNanoseconds();

// Start-up, in the order of use.
void switchDisplayMode(); // 1920 x 1080, 32 bits per pixel, full screen; kept lit from now on
void openWindow();        // borderless, over the whole display
void hideCursor();        //
void createGlContext();   // pixel format, context, made current
void loadGlFunctions();   // resolves every pointer of render/gl.h
bool drawsInSoftware();   // OpenGL is done by the processor; asked of the driver
void setSwapInterval();   // 1: wait for the vertical blank
bool isWindowVisible();

// Gives back what switchDisplayMode took: the desktop's own display mode, and leave to dim and to sleep.
// Takes the window off the screen. Once the loop has ended; the message of a fatal error does it by itself.
void restoreDesktop();

// Shows the player a message that is no fault, in UTF-8, and waits until it has been read. After restoreDesktop.
void showNotice(const std::string& message);

// Rounding to nearest, and small numbers kept: what this thread began with, whatever a foreign library has
// set since.
void resetArithmetic();

// One loop iteration.
bool isKeyDown(std::int32_t virtualKey); // down now, or pressed since last asked
void drainMessages();
ClientSize clientSize();
std::int64_t clockNanoseconds(); // steady clock
void swapBuffers();

// Where OpenGL is done in software, copying a picture costs a tenth of drawing one.
void keepPicture();      // a copy of all that is drawn by now, in place of an earlier copy
bool bringPictureBack(); // that copy, over all that is drawn; false, and nothing done: there is none of this size

// The machine as no program has used it yet, for programs that run several games. Only the simulated machine has it.
void resetMachine();

// Ends the process at once; app/process_end.h first lets go of what others wait for. The simulated platform throws
// ProgramExit instead.
[[noreturn]] void exitProcess(int status);

} // namespace dunkman::platform
