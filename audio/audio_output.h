#pragma once

#include <atomic>
#include <cstdint>

#include "audio/ring.h"
#include "audio/system_calls.h"

struct IAudioClient;

namespace dunkman {

// The output stream with its audio thread. Windows only. Held by two owners, the main thread and the audio
// thread; the last one to let go frees everything, so that an audio thread which hangs inside the system
// cannot keep the main thread from ending.
class AudioOutput {
public:
    // Opens the default device and starts the audio thread. Without a device that can be opened, the thread waits for
    // one, and a line goes to the debugger output. On failure of anything else nothing is held and `output` is null.
    static CallResult start(SystemCalls& system, AudioOutput*& output);

    // Stops the audio thread and frees everything, or leaves that to the thread if it does not answer in
    // time. `output` is gone afterwards. Returns null, or the thread that goes on: the caller closes it.
    [[nodiscard]] static void* stop(AudioOutput* output);

    AudioRing ring;

private:
    friend class WindowsPlaybackDevice;

    explicit AudioOutput(SystemCalls& itsCalls) : calls(itsCalls) {}
    ~AudioOutput();

    CallResult open();
    CallResult startThread();
    void letGo();
    void releaseClient();
    static unsigned long runThread(void* output);

    SystemCalls& calls;
    IAudioClient* client = nullptr; // only the audio thread uses and replaces it between start and stop
    void* event = nullptr;
    void* thread = nullptr;
    WaveFormat* format = nullptr;
    bool hasDevice = false; // when the audio thread starts
    std::atomic<std::uint32_t> stopRequested = 0;
    std::atomic<int> owners = 1;
};

} // namespace dunkman
