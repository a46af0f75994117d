#include "audio/windows_device.h"

#include <chrono>

#include <windows.h>

#include <audioclient.h>

#include "audio/stream.h"

namespace dunkman {

WindowsAudioDevice::WindowsAudioDevice(AudioOutput& itsOutput)
    : output(itsOutput), watch(itsOutput.system, itsOutput.event) {}

WindowsAudioDevice::~WindowsAudioDevice() { close(); }

CallResult WindowsAudioDevice::open(std::uint32_t& bufferFrames) {
    if (output.client != nullptr) {
        output.client->Release();
        output.client = nullptr;
    }
    watch.forget();
    CallResult result = activateDefaultDevice(output.system, output.client);
    if (result.failed()) {
        return result;
    }
    result = initializeStream(*output.client, *output.format);
    if (result.failed()) {
        return result;
    }
    result = streamBufferFrames(*output.client, bufferFrames);
    if (result.failed()) {
        return result;
    }
    return setStreamEvent(*output.client, output.event);
}

CallResult WindowsAudioDevice::start() {
    void* service = nullptr;
    const HRESULT found = output.client->GetService(__uuidof(IAudioRenderClient), &service);
    if (FAILED(found)) {
        return {"IAudioClient::GetService", found};
    }
    render = static_cast<IAudioRenderClient*>(service);
    const HRESULT started = output.client->Start();
    isStarted = SUCCEEDED(started);
    return {"IAudioClient::Start", started};
}

void WindowsAudioDevice::close() {
    if (isStarted) {
        output.client->Stop();
        isStarted = false;
    }
    if (render != nullptr) {
        render->Release();
        render = nullptr;
    }
}

AudioDevice::Wake WindowsAudioDevice::wait(std::uint32_t milliseconds) {
    switch (WaitForSingleObject(output.event, milliseconds)) {
    case WAIT_OBJECT_0:
        return Wake::Signalled;
    case WAIT_TIMEOUT:
        return Wake::TimedOut;
    default:
        return Wake::Failed;
    }
}

CallResult WindowsAudioDevice::queuedFrames(std::uint32_t& frames) {
    UINT32 padding = 0;
    const HRESULT code = output.client->GetCurrentPadding(&padding);
    frames = padding;
    return {"IAudioClient::GetCurrentPadding", code};
}

CallResult WindowsAudioDevice::acquireBuffer(std::uint32_t frames, std::byte*& data) {
    BYTE* buffer = nullptr;
    const HRESULT code = render->GetBuffer(frames, &buffer);
    data = reinterpret_cast<std::byte*>(buffer);
    return {"IAudioRenderClient::GetBuffer", code};
}

CallResult WindowsAudioDevice::releaseBuffer(std::uint32_t frames, bool silent) {
    const DWORD flags = silent ? AUDCLNT_BUFFERFLAGS_SILENT : 0;
    return {"IAudioRenderClient::ReleaseBuffer", render->ReleaseBuffer(frames, flags)};
}

bool WindowsAudioDevice::defaultDeviceChanged() { return watch.changed(); }

std::int64_t WindowsAudioDevice::clockNanoseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

} // namespace dunkman
