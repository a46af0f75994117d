#pragma once

#include "audio/ring.h"

namespace dunkman {

// The ring that feedAudio fills; null without sound. Set and cleared by the platform's startAudio and
// stopAudio, on the main thread.
extern AudioRing* fedRing;

} // namespace dunkman
