#include "audio/playback.h"

#include <cstring>
#include <string>

#include "base/debug_output.h"

namespace dunkman {

namespace {

// A device wants data every few milliseconds. One that has taken none for this long, whether it still signals
// or not, is taken for lost; together with one retry that stays below the two seconds in which sound has to
// be back.
constexpr std::int64_t quietNanoseconds = 1'000'000'000;
constexpr std::uint32_t waitMilliseconds = 500;

constexpr std::uint32_t retryMilliseconds = 250;

enum class Ending { Stopped, Lost, Reopened };

bool takeStopRequest(std::atomic<std::uint32_t>& stopRequested) { return stopRequested.exchange(0) != 0; }

// Counts the frames that would have been played since it was last asked, without losing a fraction.
class SilentClock {
public:
    explicit SilentClock(std::int64_t nanoseconds) : start(nanoseconds) {}

    std::uint32_t framesUntil(std::int64_t nanoseconds) {
        constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
        constexpr std::int64_t framesPerMillisecond = streamFormat.samplesPerSecond / 1000;
        const std::int64_t due = (nanoseconds - start) * framesPerMillisecond / nanosecondsPerMillisecond;
        const std::int64_t frames = due - counted;
        counted = due;
        return static_cast<std::uint32_t>(frames);
    }

private:
    std::int64_t start;
    std::int64_t counted = 0; // frames
};

class Playback {
public:
    Playback(AudioRing& itsRing, PlaybackDevice& itsDevice, bool isOpen,
             std::atomic<std::uint32_t>& itsStopRequest)
        : ring(itsRing), device(itsDevice), stopRequested(itsStopRequest),
          lastServed(itsDevice.clockNanoseconds()), lossReported(!isOpen) {}

    // Plays until the end or until the device is lost.
    Ending play() {
        lastServed = device.clockNanoseconds();
        std::uint32_t bufferFrames = 0;
        const CallResult started = device.start(bufferFrames);
        if (started.failed()) {
            return lose(describe(started, consequence));
        }
        ring.setDeviceBuffer(bufferFrames);
        while (true) {
            const PlaybackDevice::Wake wake = device.wait(waitMilliseconds);
            if (wake == PlaybackDevice::Wake::Failed || takeStopRequest(stopRequested)) {
                return Ending::Stopped;
            }
            if (device.defaultDeviceChanged()) {
                return lose("audio: another device has become the default: opening that");
            }
            std::uint32_t frames = 0;
            const CallResult result = drainStep(ring, device, bufferFrames, frames);
            if (result.failed()) {
                return lose(describe(result, consequence));
            }
            const std::int64_t now = device.clockNanoseconds();
            if (frames > 0) {
                lastServed = now;
                lossReported = false;
            } else if (now - lastServed >= quietNanoseconds) {
                return lose("audio: the device has stopped playing: opening it anew");
            }
        }
    }

    // Waits for a default device and opens it. Never tries twice without a pause, so that a device that opens
    // but cannot play does not keep a processor busy.
    Ending reopen() {
        device.close();
        SilentClock silence(lastServed);
        while (true) {
            if (device.wait(retryMilliseconds) == PlaybackDevice::Wake::Failed ||
                takeStopRequest(stopRequested)) {
                return Ending::Stopped;
            }
            const CallResult opened = device.open();
            ring.skip(silence.framesUntil(device.clockNanoseconds()));
            if (!opened.failed()) {
                return Ending::Reopened;
            }
        }
    }

private:
    static constexpr const char* consequence = "silence until the default device can be opened anew";

    // One line for each loss, however many attempts it takes until sound is back.
    Ending lose(const std::string& line) {
        if (!lossReported) {
            debugText(line);
            lossReported = true;
        }
        return Ending::Lost;
    }

    AudioRing& ring;
    PlaybackDevice& device;
    std::atomic<std::uint32_t>& stopRequested;
    std::int64_t lastServed; // nanoseconds; before anything was: when playing began
    bool lossReported;
};

} // namespace

CallResult drainStep(AudioRing& ring, PlaybackDevice& device, std::uint32_t bufferFrames,
                     std::uint32_t& framesGiven) {
    framesGiven = 0;
    std::uint32_t queued = 0;
    CallResult result = device.queuedFrames(queued);
    if (result.failed()) {
        return result;
    }
    const std::uint32_t available = queued < bufferFrames ? bufferFrames - queued : 0;
    std::byte* destination = nullptr;
    result = device.acquireBuffer(available, destination);
    if (result.failed()) {
        return result;
    }
    const AudioRing::Drain drain = ring.beginDrain(available);
    framesGiven = drain.frames > 0 ? drain.frames : available;
    if (drain.frames == 0) {
        return device.releaseBuffer(available, true);
    }
    std::memcpy(destination, drain.data, std::size_t{drain.frames} * AudioRing::bytesPerFrame);
    ring.endDrain(drain);
    return device.releaseBuffer(drain.frames, false);
}

void playRing(AudioRing& ring, PlaybackDevice& device, bool isOpen,
              std::atomic<std::uint32_t>& stopRequested) {
    Playback playback(ring, device, isOpen, stopRequested);
    Ending ending = isOpen ? playback.play() : Ending::Lost;
    while (ending == Ending::Lost && playback.reopen() == Ending::Reopened) {
        ending = playback.play();
    }
    device.close();
}

} // namespace dunkman
