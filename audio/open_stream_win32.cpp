#include "audio/open_stream.h"

#include <windows.h>

#include <audioclient.h>
#include <mmdeviceapi.h>

#include "audio/com_handle.h"

namespace dunkman {

namespace {

constexpr DWORD eventDriven = 0x00040000;             // AUDCLNT_STREAMFLAGS_EVENTCALLBACK
constexpr DWORD convertPcm = 0x80000000;              // AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM
constexpr DWORD convertAtDefaultQuality = 0x08000000; // AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY

const WAVEFORMATEX* systemFormat(const WaveFormat& format) {
    return reinterpret_cast<const WAVEFORMATEX*>(&format);
}

enum class Attempt {
    Done,
    Impossible, // the client is as it was
    Failed,     // half-way: what the client is now is not documented
};

Attempt initializeWithShortestPeriod(IAudioClient& client, const WaveFormat& format) {
    ComHandle<IAudioClient3> lowLatency;
    if (FAILED(client.QueryInterface(__uuidof(IAudioClient3), lowLatency.receiveAny()))) {
        return Attempt::Impossible;
    }
    UINT32 defaultFrames = 0;
    UINT32 fundamentalFrames = 0;
    UINT32 shortestFrames = 0;
    UINT32 longestFrames = 0;
    if (FAILED(lowLatency->GetSharedModeEnginePeriod(systemFormat(format), &defaultFrames, &fundamentalFrames,
                                                     &shortestFrames, &longestFrames))) {
        return Attempt::Impossible;
    }
    const HRESULT initialized =
        lowLatency->InitializeSharedAudioStream(eventDriven, shortestFrames, systemFormat(format), nullptr);
    return SUCCEEDED(initialized) ? Attempt::Done : Attempt::Failed;
}

CallResult initializeWithDefaultPeriod(IAudioClient& client, const WaveFormat& format) {
    REFERENCE_TIME defaultPeriod = 0;
    const HRESULT period = client.GetDevicePeriod(&defaultPeriod, nullptr);
    if (FAILED(period)) {
        return {"IAudioClient::GetDevicePeriod", period};
    }
    return {"IAudioClient::Initialize",
            client.Initialize(AUDCLNT_SHAREMODE_SHARED, eventDriven | convertPcm | convertAtDefaultQuality,
                              defaultPeriod, 0, systemFormat(format), nullptr)};
}

} // namespace

CallResult activateDefaultDevice(SystemCalls& system, IAudioClient*& client) {
    IMMDeviceEnumerator* created = nullptr;
    const CallResult enumeratorResult = system.createEnumerator(created);
    if (enumeratorResult.failed()) {
        return enumeratorResult;
    }
    ComHandle<IMMDevice> device;
    const HRESULT endpoint = created->GetDefaultAudioEndpoint(eRender, eConsole, device.receive());
    created->Release();
    if (FAILED(endpoint)) {
        return {"IMMDeviceEnumerator::GetDefaultAudioEndpoint", endpoint};
    }
    ComHandle<IAudioClient2> activated;
    const HRESULT activation =
        device->Activate(__uuidof(IAudioClient2), CLSCTX_ALL, nullptr, activated.receiveAny());
    if (FAILED(activation)) {
        return {"IMMDevice::Activate", activation};
    }
    client = activated.detach();
    return {};
}

CallResult initializeStream(SystemCalls& system, IAudioClient*& client, const WaveFormat& format) {
    const Attempt attempt = initializeWithShortestPeriod(*client, format);
    if (attempt == Attempt::Done) {
        return {};
    }
    if (attempt == Attempt::Failed) {
        client->Release();
        client = nullptr;
        const CallResult activated = activateDefaultDevice(system, client);
        if (activated.failed()) {
            return activated;
        }
    }
    return initializeWithDefaultPeriod(*client, format);
}

CallResult streamBufferFrames(IAudioClient& client, std::uint32_t& frames) {
    UINT32 count = 0;
    const HRESULT code = client.GetBufferSize(&count);
    frames = count;
    return {"IAudioClient::GetBufferSize", code};
}

CallResult setStreamEvent(IAudioClient& client, void* event) {
    return {"IAudioClient::SetEventHandle", client.SetEventHandle(event)};
}

} // namespace dunkman
