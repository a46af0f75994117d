#pragma once

#include <cstddef>
#include <cstdint>

#include "audio/call_result.h"

namespace dunkman {

// The default output device as the audio thread sees it. The Windows one translates each call and decides
// nothing; tests bring their own. All calls come from the audio thread.
class PlaybackDevice {
public:
    enum class Wake {
        Signalled, // the device wants data, or somebody wants the thread's attention
        TimedOut,
        Failed,
    };

    // Opens a stream on the device that is the default now. After a failure, and after close, nothing is held
    // and open may be tried again.
    virtual CallResult open() = 0;
    virtual CallResult start(std::uint32_t& bufferFrames) = 0; // `bufferFrames`: the size of its buffer
    virtual void close() = 0; // stops what was started; also after a failed start

    virtual Wake wait(std::uint32_t milliseconds) = 0;
    virtual CallResult queuedFrames(std::uint32_t& frames) = 0; // in the device's buffer, not yet played
    virtual CallResult acquireBuffer(std::uint32_t frames, std::byte*& data) = 0;
    virtual CallResult releaseBuffer(std::uint32_t frames, bool silent) = 0;

    // Whether another device has become the default since open.
    virtual bool defaultDeviceChanged() = 0;

    virtual std::int64_t clockNanoseconds() = 0; // steady

protected:
    ~PlaybackDevice() = default;
};

} // namespace dunkman
