#include <algorithm>
#include <cstring>
#include <memory>

#include "audio/fed_ring.h"
#include "audio/sound.h"
#include "base/fatal.h"
#include "platform/film/film.h"

namespace dunkman {

namespace {

std::unique_ptr<AudioRing> filmRing;

} // namespace

// The device has no buffer of its own: what a step mixes is heard with its picture.
void startAudio() {
    stopAudio();
    auto ring = std::make_unique<AudioRing>();
    const CallResult allocated = ring->allocate(AudioRing::sizeFor(streamFormat.averageBytesPerSecond));
    if (allocated.failed()) {
        fatal(describe(allocated, "a film without sound is not made"));
    }
    filmRing = std::move(ring);
    fedRing = filmRing.get();
}

void stopAudio() {
    fedRing = nullptr;
    filmRing.reset();
}

void finishAudio() {} // the last picture's sound is still to be taken

void film::takeSound(std::span<float> stereo) {
    std::ranges::fill(stereo, 0.0f);
    if (filmRing == nullptr || stereo.empty()) {
        return;
    }
    const auto frames = static_cast<std::uint32_t>(stereo.size_bytes() / AudioRing::bytesPerFrame);
    const AudioRing::Drain drain = filmRing->beginDrain(frames);
    if (drain.frames > 0) {
        std::memcpy(stereo.data(), drain.data, std::size_t{drain.frames} * AudioRing::bytesPerFrame);
        filmRing->endDrain(drain);
    }
}

} // namespace dunkman
