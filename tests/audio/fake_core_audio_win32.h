#pragma once

#include <memory>
#include <string>
#include <vector>

#include "audio/system_calls.h"

namespace dunkman::testing {

// A machine with one output device, made of fake COM objects. Notes every call and lets one of them fail.
class FakeCoreAudio {
public:
    struct Script {
        std::string failing;       // the call that fails, by the name it is noted under; empty: none
        bool hasLowLatency = true; // whether the client answers to IAudioClient3
        std::uint32_t bufferFrames = 1056;
        unsigned renderBlocksFor = 0; // milliseconds that ReleaseBuffer hangs
        unsigned closeBlocksFor = 0;  // and Release of a client that has been stopped
    };

    explicit FakeCoreAudio(Script script);
    ~FakeCoreAudio();
    FakeCoreAudio(const FakeCoreAudio&) = delete;
    FakeCoreAudio& operator=(const FakeCoreAudio&) = delete;

    SystemCalls& system();

    std::vector<std::string> calls() const;
    int liveReferences() const; // to COM objects that have been handed out
    int liveHandles() const;    // events, threads, formats
    void* streamEvent() const;  // as the client was given it
    void* callback() const;     // the IMMNotificationClient that is registered; null: none
    void mend();                // what failed succeeds from now on
    void loseDevice();          // GetCurrentPadding says so from now on
    void returnDevice();
    void waitForThreadEnd(); // of a thread that was given up

    struct State;

private:
    std::unique_ptr<State> state;
};

} // namespace dunkman::testing
