#pragma once

// The sound of the program as its shell sees it. Main thread only. A machine without sound is no fault: the
// game runs on in silence.
namespace dunkman {

// Opens the default output device and starts the audio thread. Does not throw; a failure leaves everything
// released and writes one line to the debugger output. Supplied by the platform.
void startAudio();

// Decodes both pieces of music; the game track loops, starting at its end, the intro track stands at its
// start.
void loadMusicTracks();

// Mixes the selected music into the ring. The last thing that a simulation step does.
void feedAudio();

// Ends the audio thread and releases everything that startAudio took. Returns within 100 ms; does nothing
// when nothing was started. Supplied by the platform.
void stopAudio();

// Stops, forgets both tracks and selects silence, as before start-up. For programs that run many games.
void resetAudio();

} // namespace dunkman
