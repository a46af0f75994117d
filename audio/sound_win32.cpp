#include "audio/audio_output.h"
#include "audio/fed_ring.h"
#include "audio/sound.h"
#include "base/debug_output.h"

namespace dunkman {

namespace {

// The window is off the screen by then.
constexpr unsigned lateMilliseconds = 2000;

AudioOutput* currentOutput = nullptr;
void* lateThread = nullptr; // one that stopAudio has left to itself
bool hasCom = false;

void closeLateThread() {
    if (lateThread != nullptr) {
        windowsSystemCalls().closeHandle(lateThread);
        lateThread = nullptr;
    }
}

} // namespace

void startAudio() {
    stopAudio();
    SystemCalls& system = windowsSystemCalls();
    const CallResult initialized = system.initializeCom(false);
    hasCom = !initialized.failed();
    // Somebody else may have initialised COM in the other way; that serves as well, but is not ours to end.
    const CallResult started = AudioOutput::start(system, currentOutput);
    if (started.failed()) {
        debugText(describe(started, "the game goes on in silence"));
        stopAudio();
        return;
    }
    fedRing = &currentOutput->ring;
}

void stopAudio() {
    fedRing = nullptr;
    void* const goesOn = currentOutput == nullptr ? nullptr : AudioOutput::stop(currentOutput);
    currentOutput = nullptr;
    // A thread that hangs in the audio system still stands on what COM has loaded for this one.
    if (hasCom && goesOn == nullptr) {
        windowsSystemCalls().uninitializeCom();
    }
    hasCom = false;
    if (goesOn != nullptr) {
        closeLateThread();
        lateThread = goesOn;
    }
}

void finishAudio() {
    stopAudio();
    if (lateThread != nullptr) {
        windowsSystemCalls().waitForThread(lateThread, lateMilliseconds);
        closeLateThread();
    }
}

} // namespace dunkman
