#pragma once

#include "audio/audio_output.h"
#include "audio/device_watch.h"
#include "audio/playback_device.h"

struct IAudioRenderClient;

namespace dunkman {

// The output's stream as the audio thread plays it. Lives on that thread, which has COM initialised.
class WindowsPlaybackDevice final : public PlaybackDevice {
public:
    explicit WindowsPlaybackDevice(AudioOutput& itsOutput);
    ~WindowsPlaybackDevice();

    CallResult open() override;
    CallResult start(std::uint32_t& bufferFrames) override;
    void close() override;
    Wake wait(std::uint32_t milliseconds) override;
    CallResult queuedFrames(std::uint32_t& frames) override;
    CallResult acquireBuffer(std::uint32_t frames, std::byte*& data) override;
    CallResult releaseBuffer(std::uint32_t frames, bool silent) override;
    bool defaultDeviceChanged() override;
    std::int64_t clockNanoseconds() override;

private:
    AudioOutput& output;
    DeviceWatch watch;
    IAudioRenderClient* render = nullptr;
    bool isStarted = false;
};

} // namespace dunkman
