#include "audio/device_watch.h"

#include <windows.h>

#include <mmdeviceapi.h>

namespace dunkman {

// Lives as long as its registration; nobody else counts references to it.
class DeviceWatch::Client final : public IMMNotificationClient {
public:
    Client(SystemCalls& itsSystem, void* itsEvent, std::atomic<bool>& itsFlag)
        : system(itsSystem), event(itsEvent), flag(itsFlag) {}
    virtual ~Client() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != __uuidof(IUnknown) && id != __uuidof(IMMNotificationClient)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IMMNotificationClient*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    // Comes from a thread of the system's own.
    HRESULT STDMETHODCALLTYPE OnDefaultDeviceChanged(EDataFlow flow, ERole role, LPCWSTR) override {
        if (flow == eRender && role == eConsole) {
            flag.store(true, std::memory_order_relaxed);
            system.setEvent(event);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnDeviceStateChanged(LPCWSTR, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDeviceAdded(LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDeviceRemoved(LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPropertyValueChanged(LPCWSTR, const PROPERTYKEY) override { return S_OK; }

private:
    SystemCalls& system;
    void* event;
    std::atomic<bool>& flag;
};

DeviceWatch::DeviceWatch(SystemCalls& system, void* event)
    : client(std::make_unique<Client>(system, event, defaultChanged)) {
    IMMDeviceEnumerator* created = nullptr;
    if (system.createEnumerator(created).failed()) {
        return;
    }
    if (FAILED(created->RegisterEndpointNotificationCallback(client.get()))) {
        created->Release();
        return;
    }
    enumerator = created;
}

DeviceWatch::~DeviceWatch() {
    if (enumerator != nullptr) {
        enumerator->UnregisterEndpointNotificationCallback(client.get());
        enumerator->Release();
    }
}

} // namespace dunkman
