#pragma once

#include "audio/call_result.h"
#include "audio/wave_format.h"

struct IMMDeviceEnumerator;

namespace dunkman {

// The system's calls around the output stream that are not operations of its COM objects. Windows only. Tests
// bring their own and hand out fake objects.
class SystemCalls {
public:
    // For the calling thread. A success asks for one uninitializeCom on the same thread.
    virtual CallResult initializeCom(bool multithreaded) = 0;
    virtual void uninitializeCom() = 0;

    virtual CallResult createEnumerator(IMMDeviceEnumerator*& enumerator) = 0; // the caller releases it

    virtual WaveFormat* allocateFormat() = 0; // uninitialised; null when out of memory
    virtual void freeFormat(WaveFormat* format) = 0;

    virtual CallResult createEvent(void*& event) = 0; // auto-reset, not signalled
    virtual CallResult startThread(unsigned long (*function)(void*), void* argument, void*& thread) = 0;
    virtual void setEvent(void* event) = 0;
    virtual bool waitForThread(void* thread, unsigned milliseconds) = 0; // whether it has ended
    virtual void closeHandle(void* handle) = 0;

protected:
    ~SystemCalls() = default;
};

SystemCalls& windowsSystemCalls();

} // namespace dunkman
