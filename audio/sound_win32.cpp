#include "audio/audio_output.h"
#include "audio/fed_ring.h"
#include "audio/sound.h"
#include "base/debug_output.h"

namespace dunkman {

namespace {

AudioOutput* currentOutput = nullptr;
bool hasCom = false;

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
    const bool hasEnded = currentOutput == nullptr || AudioOutput::stop(currentOutput);
    currentOutput = nullptr;
    // A thread that hangs in the audio system still stands on what COM has loaded for this one.
    if (hasCom && hasEnded) {
        windowsSystemCalls().uninitializeCom();
    }
    hasCom = false;
}

} // namespace dunkman
