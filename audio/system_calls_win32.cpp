#include "audio/system_calls.h"

#include <windows.h>

#include <mmdeviceapi.h>
#include <objbase.h>

namespace dunkman {

namespace {

CallResult lastError(const char* call) { return {call, HRESULT_FROM_WIN32(GetLastError())}; }

// Carries the portable signature over to the system's calling convention.
struct ThreadStart {
    unsigned long (*function)(void*);
    void* argument;
};

DWORD WINAPI runThread(void* start) {
    const ThreadStart copy = *static_cast<ThreadStart*>(start);
    delete static_cast<ThreadStart*>(start);
    return copy.function(copy.argument);
}

class WindowsSystemCalls : public SystemCalls {
public:
    CallResult initializeCom(bool multithreaded) override {
        const DWORD model = multithreaded ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED;
        return {"CoInitializeEx", CoInitializeEx(nullptr, model)};
    }
    void uninitializeCom() override { CoUninitialize(); }

    CallResult createEnumerator(IMMDeviceEnumerator*& enumerator) override {
        void* object = nullptr;
        const HRESULT code = CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_ALL,
                                              __uuidof(IMMDeviceEnumerator), &object);
        enumerator = static_cast<IMMDeviceEnumerator*>(object);
        return {"CoCreateInstance", code};
    }

    WaveFormat* allocateFormat() override {
        return static_cast<WaveFormat*>(CoTaskMemAlloc(sizeof(WaveFormat)));
    }
    void freeFormat(WaveFormat* format) override { CoTaskMemFree(format); }

    CallResult createEvent(void*& event) override {
        event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        return event == nullptr ? lastError("CreateEventW") : CallResult{};
    }
    CallResult startThread(unsigned long (*function)(void*), void* argument, void*& thread) override {
        auto* const start = new ThreadStart{function, argument};
        thread = CreateThread(nullptr, 0, runThread, start, 0, nullptr);
        if (thread == nullptr) {
            delete start;
            return lastError("CreateThread");
        }
        return {};
    }
    void setEvent(void* event) override { SetEvent(event); }
    bool waitForThread(void* thread, unsigned milliseconds) override {
        return WaitForSingleObject(thread, milliseconds) == WAIT_OBJECT_0;
    }
    void closeHandle(void* handle) override { CloseHandle(handle); }
};

} // namespace

SystemCalls& windowsSystemCalls() {
    static WindowsSystemCalls system;
    return system;
}

} // namespace dunkman
