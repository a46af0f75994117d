#pragma once

#include <atomic>
#include <memory>

#include "audio/system_calls.h"

namespace dunkman {

// Tells when another device becomes the default for output. Windows only. Without the system's help, on
// failure, it just never tells: losing the device itself is noticed in any case.
class DeviceWatch {
public:
    // Signals `event` at each change, so that whoever waits there looks. The calling thread has COM
    // initialised and is the one that ends the watch.
    DeviceWatch(SystemCalls& system, void* event);
    ~DeviceWatch();
    DeviceWatch(const DeviceWatch&) = delete;
    DeviceWatch& operator=(const DeviceWatch&) = delete;

    bool changed() const { return defaultChanged.load(std::memory_order_relaxed); }
    void forget() { defaultChanged.store(false, std::memory_order_relaxed); }

private:
    class Client;

    std::atomic<bool> defaultChanged = false;
    std::unique_ptr<Client> client;
    IMMDeviceEnumerator* enumerator = nullptr; // null: nothing is watched
};

} // namespace dunkman
