#include "platform/simulated/audio_sim.h"

#include <memory>

#include "audio/decode.h"
#include "audio/fed_ring.h"
#include "audio/sound.h"
#include "base/debug_output.h"

// A device that takes nothing: the feed works on a real ring, whose reader never moves, so that music costs a
// simulated step what it costs a played one. Music files are not looked at.
namespace dunkman {

namespace {

constexpr std::uint32_t deviceBufferFrames = 1440; // 30 ms

std::unique_ptr<AudioRing> silentRing;
bool isFinished = false;

} // namespace

void startAudio() {
    stopAudio();
    isFinished = false;
    auto ring = std::make_unique<AudioRing>();
    const CallResult allocated = ring->allocate(AudioRing::sizeFor(streamFormat.averageBytesPerSecond));
    if (allocated.failed()) {
        debugText(describe(allocated, "no sound"));
        return;
    }
    ring->setDeviceBuffer(deviceBufferFrames);
    silentRing = std::move(ring);
    fedRing = silentRing.get();
}

void stopAudio() {
    fedRing = nullptr;
    silentRing.reset();
}

// What is played to the last goes on being fed: the process ends now.
void finishAudio() { isFinished = true; }

bool simulated::isAudioFinished() { return isFinished; }

MusicTrack decodeMusic(const std::wstring&) { return {}; }

} // namespace dunkman
