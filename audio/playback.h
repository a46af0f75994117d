#pragma once

#include <atomic>
#include <cstdint>

#include "audio/playback_device.h"
#include "audio/ring.h"

namespace dunkman {

// What the audio thread does between "the device wants data" and "the buffer is given back": `bufferFrames` is the
// size of the device's buffer, `framesGiven` what it got of sound or silence, 0 when it was full. The first failing
// call ends the step and is the result.
CallResult drainStep(AudioRing& ring, PlaybackDevice& device, std::uint32_t bufferFrames,
                     std::uint32_t& framesGiven);

// The audio thread's whole work: plays the ring on a device that is open but not started, or on none yet (`isOpen`
// false; whoever found that out has reported it), until `stopRequested` is 1 and the device's wait is woken. A
// device that fails, stops playing or stops being the default one is closed, and whenever none is open, the default
// one is opened as soon as there is one; the music's clock runs on meanwhile. Closes the device at the end.
void playRing(AudioRing& ring, PlaybackDevice& device, bool isOpen,
              std::atomic<std::uint32_t>& stopRequested);

} // namespace dunkman
