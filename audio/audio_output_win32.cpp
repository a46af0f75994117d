#include "audio/audio_output.h"

#include <windows.h>

#include <audioclient.h>
#include <avrt.h>

#include "audio/open_stream.h"
#include "audio/playback.h"
#include "audio/playback_device_win32.h"
#include "base/debug_output.h"

namespace dunkman {

namespace {

// A thread that is not caught in a call of the system ends within one or two milliseconds.
constexpr unsigned threadMilliseconds = 60;

} // namespace

CallResult AudioOutput::start(SystemCalls& system, AudioOutput*& output) {
    output = new AudioOutput(system);
    CallResult result = output->open();
    if (!result.failed()) {
        result = output->startThread();
    }
    if (result.failed()) {
        output->letGo();
        output = nullptr;
    }
    return result;
}

CallResult AudioOutput::open() {
    CallResult device = activateDefaultDevice(calls, client);
    format = calls.allocateFormat();
    if (format == nullptr) {
        return {"CoTaskMemAlloc", E_OUTOFMEMORY};
    }
    *format = streamFormat;
    if (!device.failed()) {
        device = initializeStream(calls, client, *format);
    }
    std::uint32_t bufferFrames = 0;
    if (!device.failed()) {
        device = streamBufferFrames(*client, bufferFrames);
    }
    CallResult result = calls.createEvent(event);
    if (result.failed()) {
        return result;
    }
    if (!device.failed()) {
        device = setStreamEvent(*client, event);
    }
    hasDevice = !device.failed();
    if (!hasDevice) {
        debugText(describe(device, "silence until a default device can be opened"));
    }
    result = ring.allocate(AudioRing::sizeFor(format->averageBytesPerSecond));
    ring.setDeviceBuffer(hasDevice ? bufferFrames : 0);
    return result;
}

CallResult AudioOutput::startThread() {
    owners = 2;
    const CallResult result = calls.startThread(runThread, this, thread);
    if (result.failed()) {
        owners = 1;
    }
    return result;
}

unsigned long AudioOutput::runThread(void* output) {
    AudioOutput& self = *static_cast<AudioOutput*>(output);
    SystemCalls& system = self.calls;
    DWORD taskIndex = 0;
    const HANDLE task = AvSetMmThreadCharacteristicsW(L"Pro Audio", &taskIndex);
    const bool hasCom = !system.initializeCom(true).failed();
    {
        WindowsPlaybackDevice device(self);
        playRing(self.ring, device, self.hasDevice, self.stopRequested);
        // Here, where a system that does not answer holds up nobody, rather than by whoever lets go last.
        self.releaseClient();
    }
    if (task != nullptr) {
        AvRevertMmThreadCharacteristics(task);
    }
    self.letGo();
    if (hasCom) {
        system.uninitializeCom();
    }
    return 0;
}

void* AudioOutput::stop(AudioOutput* output) {
    SystemCalls& system = output->calls;
    output->stopRequested.exchange(1);
    system.setEvent(output->event);
    void* goesOn = output->thread;
    if (system.waitForThread(goesOn, threadMilliseconds)) {
        system.closeHandle(goesOn);
        goesOn = nullptr;
    }
    output->letGo();
    return goesOn;
}

void AudioOutput::letGo() {
    if (owners.fetch_sub(1) == 1) {
        delete this;
    }
}

AudioOutput::~AudioOutput() {
    if (event != nullptr) {
        calls.closeHandle(event);
    }
    ring.release();
    if (format != nullptr) {
        calls.freeFormat(format);
    }
    releaseClient();
}

void AudioOutput::releaseClient() {
    if (client != nullptr) {
        client->Release();
        client = nullptr;
    }
}

} // namespace dunkman
