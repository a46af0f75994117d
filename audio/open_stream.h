#pragma once

#include <cstdint>

#include "audio/call_result.h"
#include "audio/system_calls.h"
#include "audio/wave_format.h"

struct IAudioClient;

namespace dunkman {

// The steps in which an output stream is opened. Windows only. Every reference taken on the way is released
// again; after a failure nothing is held.

// The default output device's stream, not yet initialised; the caller releases it.
CallResult activateDefaultDevice(SystemCalls& system, IAudioClient*& client);

// Event-driven in shared mode: with the engine's shortest period where the system can do that, else with the
// default period and the engine's own format conversion. A client that fails in between is replaced by a new one;
// when there is none, `client` is null.
CallResult initializeStream(SystemCalls& system, IAudioClient*& client, const WaveFormat& format);

CallResult streamBufferFrames(IAudioClient& client, std::uint32_t& frames);

CallResult setStreamEvent(IAudioClient& client, void* event);

} // namespace dunkman
