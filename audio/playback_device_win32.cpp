#include "audio/playback_device_win32.h"

#include <chrono>

#include <windows.h>

#include <audioclient.h>

#include "audio/open_stream.h"

namespace dunkman {

WindowsPlaybackDevice::WindowsPlaybackDevice(AudioOutput& itsOutput)
    : output(itsOutput), watch(itsOutput.calls, itsOutput.event) {}

WindowsPlaybackDevice::~WindowsPlaybackDevice() { close(); }

CallResult WindowsPlaybackDevice::open() {
    if (output.client != nullptr) {
        output.client->Release();
        output.client = nullptr;
    }
    watch.forget();
    CallResult result = activateDefaultDevice(output.calls, output.client);
    if (result.failed()) {
        return result;
    }
    result = initializeStream(output.calls, output.client, *output.format);
    if (result.failed()) {
        return result;
    }
    return setStreamEvent(*output.client, output.event);
}

CallResult WindowsPlaybackDevice::start(std::uint32_t& bufferFrames) {
    void* service = nullptr;
    const HRESULT found = output.client->GetService(__uuidof(IAudioRenderClient), &service);
    if (FAILED(found)) {
        return {"IAudioClient::GetService", found};
    }
    render = static_cast<IAudioRenderClient*>(service);
    const CallResult sized = streamBufferFrames(*output.client, bufferFrames);
    if (sized.failed()) {
        return sized;
    }
    const HRESULT started = output.client->Start();
    isStarted = SUCCEEDED(started);
    return {"IAudioClient::Start", started};
}

void WindowsPlaybackDevice::close() {
    if (isStarted) {
        output.client->Stop();
        isStarted = false;
    }
    if (render != nullptr) {
        render->Release();
        render = nullptr;
    }
}

PlaybackDevice::Wake WindowsPlaybackDevice::wait(std::uint32_t milliseconds) {
    switch (WaitForSingleObject(output.event, milliseconds)) {
    case WAIT_OBJECT_0:
        return Wake::Signalled;
    case WAIT_TIMEOUT:
        return Wake::TimedOut;
    default:
        return Wake::Failed;
    }
}

CallResult WindowsPlaybackDevice::queuedFrames(std::uint32_t& frames) {
    UINT32 padding = 0;
    const HRESULT code = output.client->GetCurrentPadding(&padding);
    frames = padding;
    return {"IAudioClient::GetCurrentPadding", code};
}

CallResult WindowsPlaybackDevice::acquireBuffer(std::uint32_t frames, std::byte*& data) {
    BYTE* buffer = nullptr;
    const HRESULT code = render->GetBuffer(frames, &buffer);
    data = reinterpret_cast<std::byte*>(buffer);
    return {"IAudioRenderClient::GetBuffer", code};
}

CallResult WindowsPlaybackDevice::releaseBuffer(std::uint32_t frames, bool silent) {
    const DWORD flags = silent ? AUDCLNT_BUFFERFLAGS_SILENT : 0;
    return {"IAudioRenderClient::ReleaseBuffer", render->ReleaseBuffer(frames, flags)};
}

bool WindowsPlaybackDevice::defaultDeviceChanged() { return watch.changed(); }

std::int64_t WindowsPlaybackDevice::clockNanoseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

} // namespace dunkman
