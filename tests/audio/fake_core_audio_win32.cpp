#include "tests/audio/fake_core_audio_win32.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <windows.h>

#include <audioclient.h>
#include <mmdeviceapi.h>

namespace dunkman::testing {

namespace {

constexpr HRESULT injected = static_cast<HRESULT>(0x8889000F);

std::string hexadecimal(unsigned long number) {
    char text[16];
    std::snprintf(text, sizeof text, "%08lX", number);
    return text;
}

std::string describeFormat(const WAVEFORMATEX* format) {
    return std::memcmp(format, &streamFormat, sizeof streamFormat) == 0 ? "stream format" : "another format";
}

} // namespace

class FakeSystemCalls;

struct FakeCoreAudio::State {
    State();
    ~State();

    std::unique_ptr<FakeSystemCalls> system;
    Script script;
    mutable std::recursive_mutex mutex;
    std::vector<std::string> calls;
    int references = 0;
    int handles = 0;
    HANDLE event = nullptr;
    HANDLE threadEnded = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    IMMNotificationClient* callback = nullptr;
    std::atomic<bool> isLost = false;
    std::vector<BYTE> buffer;

    // Notes the call and tells how it ends. `details` are noted too but do not count for the name.
    HRESULT note(const std::string& name, const std::string& details = "") {
        const std::lock_guard guard(mutex);
        calls.push_back(details.empty() ? name : name + " " + details);
        return name == script.failing ? injected : S_OK;
    }
};

namespace {

using State = FakeCoreAudio::State;

// Reference counting as every COM object has it.
template <typename Interface> class Counted : public Interface {
public:
    explicit Counted(State& itsState) : state(itsState) { addReference(); }
    virtual ~Counted() = default;

    ULONG STDMETHODCALLTYPE AddRef() override { return addReference(); }
    ULONG STDMETHODCALLTYPE Release() override {
        const std::lock_guard guard(state.mutex);
        --state.references;
        const int left = --count;
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }

protected:
    State& state;

private:
    ULONG addReference() {
        const std::lock_guard guard(state.mutex);
        ++state.references;
        return static_cast<ULONG>(++count);
    }

    int count = 0;
};

class FakeRender : public Counted<IAudioRenderClient> {
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE GetBuffer(UINT32 frames, BYTE** data) override {
        state.buffer.resize(std::size_t{frames} * 8 + 1);
        *data = state.buffer.data();
        return state.note("GetBuffer", std::to_string(frames));
    }
    HRESULT STDMETHODCALLTYPE ReleaseBuffer(UINT32 frames, DWORD flags) override {
        const HRESULT code =
            state.note("ReleaseBuffer", std::to_string(frames) + " " + std::to_string(flags));
        Sleep(state.script.renderBlocksFor);
        return code;
    }
};

class FakeClient : public Counted<IAudioClient3> {
public:
    using Counted::Counted;

    ULONG STDMETHODCALLTYPE Release() override {
        Sleep(hasStopped ? state.script.closeBlocksFor : 0);
        return Counted::Release();
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = nullptr;
        if (id == __uuidof(IAudioClient3)) {
            const HRESULT code = state.note("QueryInterface IAudioClient3");
            if (FAILED(code) || !state.script.hasLowLatency) {
                return E_NOINTERFACE;
            }
        } else if (id != __uuidof(IAudioClient2) && id != __uuidof(IAudioClient) &&
                   id != __uuidof(IUnknown)) {
            return E_NOINTERFACE;
        }
        AddRef();
        *object = static_cast<IAudioClient3*>(this);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Initialize(AUDCLNT_SHAREMODE mode, DWORD flags, REFERENCE_TIME duration,
                                         REFERENCE_TIME periodicity, const WAVEFORMATEX* format,
                                         LPCGUID session) override {
        return state.note("Initialize",
                          std::string(mode == AUDCLNT_SHAREMODE_SHARED ? "shared " : "exclusive ") +
                              hexadecimal(flags) + " " + std::to_string(duration) + " " +
                              std::to_string(periodicity) + " " + describeFormat(format) +
                              (session == nullptr ? "" : " session"));
    }
    HRESULT STDMETHODCALLTYPE GetBufferSize(UINT32* frames) override {
        *frames = state.script.bufferFrames;
        return state.note("GetBufferSize");
    }
    HRESULT STDMETHODCALLTYPE GetCurrentPadding(UINT32* frames) override {
        *frames = 0;
        const HRESULT code = state.note("GetCurrentPadding");
        return state.isLost ? AUDCLNT_E_DEVICE_INVALIDATED : code;
    }
    HRESULT STDMETHODCALLTYPE GetDevicePeriod(REFERENCE_TIME* defaultPeriod,
                                              REFERENCE_TIME* shortest) override {
        *defaultPeriod = 100000;
        if (shortest != nullptr) {
            *shortest = 30000;
        }
        return state.note("GetDevicePeriod");
    }
    HRESULT STDMETHODCALLTYPE Start() override { return state.note("Start"); }
    HRESULT STDMETHODCALLTYPE Stop() override {
        hasStopped = true;
        return state.note("Stop");
    }
    HRESULT STDMETHODCALLTYPE SetEventHandle(HANDLE event) override {
        state.event = event;
        return state.note("SetEventHandle");
    }
    HRESULT STDMETHODCALLTYPE GetService(REFIID id, void** service) override {
        *service = nullptr;
        const HRESULT code =
            state.note("GetService", id == __uuidof(IAudioRenderClient) ? "render" : "other");
        if (SUCCEEDED(code)) {
            *service = static_cast<IAudioRenderClient*>(new FakeRender(state));
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE GetSharedModeEnginePeriod(const WAVEFORMATEX* format, UINT32* defaultFrames,
                                                        UINT32* fundamental, UINT32* shortest,
                                                        UINT32* longest) override {
        *defaultFrames = 480;
        *fundamental = 32;
        *shortest = 128;
        *longest = 480;
        return state.note("GetSharedModeEnginePeriod", describeFormat(format));
    }
    HRESULT STDMETHODCALLTYPE InitializeSharedAudioStream(DWORD flags, UINT32 period,
                                                          const WAVEFORMATEX* format,
                                                          LPCGUID session) override {
        return state.note("InitializeSharedAudioStream", hexadecimal(flags) + " " + std::to_string(period) +
                                                             " " + describeFormat(format) +
                                                             (session == nullptr ? "" : " session"));
    }

    // Never called: noted, so that a test would see it.
    HRESULT STDMETHODCALLTYPE GetStreamLatency(REFERENCE_TIME*) override {
        return state.note("GetStreamLatency");
    }
    HRESULT STDMETHODCALLTYPE IsFormatSupported(AUDCLNT_SHAREMODE, const WAVEFORMATEX*,
                                                WAVEFORMATEX**) override {
        return state.note("IsFormatSupported");
    }
    HRESULT STDMETHODCALLTYPE GetMixFormat(WAVEFORMATEX**) override { return state.note("GetMixFormat"); }
    HRESULT STDMETHODCALLTYPE Reset() override { return state.note("Reset"); }
    HRESULT STDMETHODCALLTYPE IsOffloadCapable(AUDIO_STREAM_CATEGORY, BOOL*) override {
        return state.note("IsOffloadCapable");
    }
    HRESULT STDMETHODCALLTYPE SetClientProperties(const AudioClientProperties*) override {
        return state.note("SetClientProperties");
    }
    HRESULT STDMETHODCALLTYPE GetBufferSizeLimits(const WAVEFORMATEX*, BOOL, REFERENCE_TIME*,
                                                  REFERENCE_TIME*) override {
        return state.note("GetBufferSizeLimits");
    }
    HRESULT STDMETHODCALLTYPE GetCurrentSharedModeEnginePeriod(WAVEFORMATEX**, UINT32*) override {
        return state.note("GetCurrentSharedModeEnginePeriod");
    }

private:
    std::atomic<bool> hasStopped = false;
};

class FakeDevice : public Counted<IMMDevice> {
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE Activate(REFIID id, DWORD context, PROPVARIANT* parameters,
                                       void** object) override {
        *object = nullptr;
        const bool asExpected =
            id == __uuidof(IAudioClient2) && context == CLSCTX_ALL && parameters == nullptr;
        const HRESULT code = state.note("Activate", asExpected ? "IAudioClient2" : "something else");
        if (SUCCEEDED(code)) {
            *object = static_cast<IAudioClient2*>(new FakeClient(state));
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE OpenPropertyStore(DWORD, IPropertyStore**) override {
        return state.note("OpenPropertyStore");
    }
    HRESULT STDMETHODCALLTYPE GetId(LPWSTR*) override { return state.note("GetId"); }
    HRESULT STDMETHODCALLTYPE GetState(DWORD*) override { return state.note("GetState"); }
};

class FakeEnumerator : public Counted<IMMDeviceEnumerator> {
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole role,
                                                      IMMDevice** device) override {
        *device = nullptr;
        const HRESULT code =
            state.note("GetDefaultAudioEndpoint",
                       flow == eRender && role == eConsole ? "render console" : "something else");
        if (SUCCEEDED(code)) {
            *device = new FakeDevice(state);
        }
        return code;
    }
    HRESULT STDMETHODCALLTYPE RegisterEndpointNotificationCallback(IMMNotificationClient* client) override {
        state.callback = client;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnregisterEndpointNotificationCallback(IMMNotificationClient*) override {
        state.callback = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumAudioEndpoints(EDataFlow, DWORD, IMMDeviceCollection**) override {
        return state.note("EnumAudioEndpoints");
    }
    HRESULT STDMETHODCALLTYPE GetDevice(LPCWSTR, IMMDevice**) override { return state.note("GetDevice"); }
};

} // namespace

// The calls around the objects: real events and threads, counted.
class FakeSystemCalls : public SystemCalls {
public:
    explicit FakeSystemCalls(State& itsState) : state(itsState) {}
    virtual ~FakeSystemCalls() = default;

    CallResult initializeCom(bool multithreaded) override {
        return {"CoInitializeEx",
                state.note("CoInitializeEx", multithreaded ? "multithreaded" : "apartment")};
    }
    void uninitializeCom() override {
        state.note("CoUninitialize");
        SetEvent(state.threadEnded);
    }
    CallResult createEnumerator(IMMDeviceEnumerator*& enumerator) override {
        const HRESULT code = state.note("CoCreateInstance");
        enumerator = SUCCEEDED(code) ? new FakeEnumerator(state) : nullptr;
        return {"CoCreateInstance", code};
    }
    WaveFormat* allocateFormat() override {
        if (FAILED(state.note("CoTaskMemAlloc"))) {
            return nullptr;
        }
        count(1);
        return new WaveFormat();
    }
    void freeFormat(WaveFormat* format) override {
        state.note("CoTaskMemFree");
        count(-1);
        delete format;
    }
    CallResult createEvent(void*& event) override {
        const HRESULT code = state.note("CreateEventW");
        if (SUCCEEDED(code)) {
            windowsSystemCalls().createEvent(event);
            count(1);
        }
        return {"CreateEventW", code};
    }
    CallResult startThread(unsigned long (*function)(void*), void* argument, void*& thread) override {
        const HRESULT code = state.note("CreateThread");
        if (FAILED(code)) {
            return {"CreateThread", code};
        }
        count(1);
        ResetEvent(state.threadEnded);
        return windowsSystemCalls().startThread(function, argument, thread);
    }
    void setEvent(void* event) override {
        state.note("SetEvent");
        windowsSystemCalls().setEvent(event);
    }
    bool waitForThread(void* thread, unsigned milliseconds) override {
        state.note("WaitForSingleObject");
        return windowsSystemCalls().waitForThread(thread, milliseconds);
    }
    void closeHandle(void* handle) override {
        state.note("CloseHandle");
        count(-1);
        windowsSystemCalls().closeHandle(handle);
    }

private:
    void count(int change) {
        const std::lock_guard guard(state.mutex);
        state.handles += change;
    }

    State& state;
};

FakeCoreAudio::State::State() = default;

FakeCoreAudio::State::~State() = default;

FakeCoreAudio::FakeCoreAudio(Script script) : state(std::make_unique<State>()) {
    state->script = std::move(script);
    state->system = std::make_unique<FakeSystemCalls>(*state);
}

FakeCoreAudio::~FakeCoreAudio() {
    waitForThreadEnd();
    CloseHandle(state->threadEnded);
}

SystemCalls& FakeCoreAudio::system() { return *state->system; }

std::vector<std::string> FakeCoreAudio::calls() const {
    const std::lock_guard guard(state->mutex);
    return state->calls;
}

int FakeCoreAudio::liveReferences() const {
    const std::lock_guard guard(state->mutex);
    return state->references;
}

int FakeCoreAudio::liveHandles() const {
    const std::lock_guard guard(state->mutex);
    return state->handles;
}

void* FakeCoreAudio::streamEvent() const { return state->event; }

void* FakeCoreAudio::callback() const { return state->callback; }

void FakeCoreAudio::loseDevice() { state->isLost = true; }

void FakeCoreAudio::mend() {
    const std::lock_guard guard(state->mutex);
    state->script.failing.clear();
}

void FakeCoreAudio::returnDevice() { state->isLost = false; }

void FakeCoreAudio::waitForThreadEnd() { WaitForSingleObject(state->threadEnded, 5000); }

} // namespace dunkman::testing
